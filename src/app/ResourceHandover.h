// The skin and the language that the user has chosen, on their way to the service, before the program is started
// anew with them. User-interface thread only.
#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "base/Clock.h"
#include "base/WhileAlive.h"
#include "commands/Commander.h"
#include "commands/Withdrawal.h"
#include "config/ResourceChoice.h"
#include "ipc/ServiceLink.h"

namespace brennvar {

// What commands get that the end of the program waits for: a service that is there may just be busy, one that is
// gone must not hold the user up.
inline constexpr ServiceLink::Patience kLastCommandsPatience{.whileReachable = std::chrono::seconds(10),
                                                             .whileMissing = std::chrono::seconds(3)};

class ResourceHandover {
public:
    // All are borrowed.
    ResourceHandover(Commander& commander, const ServiceLink& link, const Clock& clock)
        : m_commander(commander), m_link(link), m_clock(clock) {}
    ResourceHandover(const ResourceHandover&) = delete;
    ResourceHandover& operator=(const ResourceHandover&) = delete;

    // One at a time. over is called once, later than this call. What has not found the service by then never does;
    // a choice whose first command has gone still goes on, so that without a delivery either may come of it.
    void Begin(const ResourceChoice& choice, std::function<void(bool isDelivered)> over);
    // To be called every 100 ms or so.
    void Tick();

private:
    void End(bool isDelivered);

    Commander& m_commander;
    const ServiceLink& m_link;
    const Clock& m_clock;
    std::function<void(bool)> m_over;     // empty: nothing is on its way
    std::chrono::milliseconds m_since{};  // it began
    unsigned m_count = 0;                 // so many have begun
    Withdrawal m_withdrawal;
    WhileAlive m_alive;
};

}  // namespace brennvar
