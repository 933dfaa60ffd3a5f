// Somebody is told later, by a service, a thread or a dialog, and may have gone by then. A member of whoever is
// told: what it hands out does nothing once it is destroyed. Calls and destruction on one thread.
#pragma once

#include <memory>
#include <utility>

namespace brennvar {

class WhileAlive {
public:
    WhileAlive() = default;
    // Guards are for this owner, not for a copy of it.
    WhileAlive(const WhileAlive&) = delete;
    WhileAlive& operator=(const WhileAlive&) = delete;

    // The action as something to call, with any arguments that the action takes; its result is dropped.
    template <class Action>
    [[nodiscard]] auto Guard(Action action) const {
        return [alive = std::weak_ptr(m_alive), action = std::move(action)](auto&&... arguments) {
            if (!alive.expired()) action(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    const std::shared_ptr<const bool> m_alive = std::make_shared<const bool>(true);
};

}  // namespace brennvar
