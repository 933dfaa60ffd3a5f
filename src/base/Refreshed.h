// Something that is read again and again on another thread, because what it stands for changes: a file of the
// service, the driver's tables. At most one reading is under way. Who asks meanwhile gets one more, which begins
// when it is over, so that what is delivered last was never read before it was asked for.
//
// A member of whoever shows the result, on the user-interface thread: when the owner goes, what is still being read
// is delivered to nobody.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "base/TaskQueue.h"

namespace brennvar {

// Value: what is read. Request: what a reading needs to be told; of several that were asked for during one reading,
// the last one is read.
template <class Value, class Request = std::monostate>
class Refreshed {
public:
    // On the queue's thread; it may outlast this object and must hold nothing of its owner. Nothing, or an
    // exception: it could not be read.
    using Read = std::function<std::optional<Value>(const Request& request)>;
    // On the user-interface thread, with the request that was read. May ask for the next reading.
    using Deliver = std::function<void(std::optional<Value> value, const Request& request)>;

    // The queue is borrowed. Nothing is read yet.
    Refreshed(TaskQueue& queue, Read read, Deliver deliver)
        : m_state(std::make_shared<State>(queue, std::move(read), std::move(deliver))) {}
    Refreshed(const Refreshed&) = delete;
    Refreshed& operator=(const Refreshed&) = delete;
    ~Refreshed() { m_state->isGone = true; }

    // Asks for a reading that begins after this call.
    void Refresh(Request request = {}) { m_state->Want(m_state, std::move(request)); }
    // From the first request until the last reading has been delivered.
    [[nodiscard]] bool IsReading() const { return m_state->isReading; }
    // What was asked for during the reading that is under way; none: nothing more will be read.
    [[nodiscard]] const std::optional<Request>& Next() const { return m_state->next; }

private:
    struct State {
        State(TaskQueue& q, Read r, Deliver d) : queue(q), read(std::move(r)), deliver(std::move(d)) {}

        static void Want(const std::shared_ptr<State>& self, Request request) {
            if (self->isReading) {
                self->next = std::move(request);
                return;
            }
            const auto shared = std::make_shared<const Request>(std::move(request));
            self->queue.template Ask<std::optional<Value>>(
                [read = self->read, shared] { return read(*shared); },
                [self, shared](std::optional<std::optional<Value>> value) {
                    if (!self->isGone) Finish(self, std::move(value).value_or(std::nullopt), *shared);
                });
            self->isReading = true;  // not before: without memory it is not asked
        }

        static void Finish(const std::shared_ptr<State>& self, std::optional<Value> value, const Request& request) {
            self->isReading = false;
            // Before the delivery, which may be long: a menu that opens with what was read stays until the user has
            // chosen.
            try {
                if (auto next = std::exchange(self->next, std::nullopt)) Want(self, *std::move(next));
            } catch (...) {  // NOLINT(bugprone-empty-catch): not read again, and this is delivered all the same
            }
            self->deliver(std::move(value), request);
        }

        TaskQueue& queue;
        const Read read;
        const Deliver deliver;
        bool isReading = false;
        bool isGone = false;
        std::optional<Request> next;
    };

    const std::shared_ptr<State> m_state;
};

}  // namespace brennvar
