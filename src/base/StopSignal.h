// One-way signal from the owner of a thread to its waits: stop now.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace brennvar {

class StopSignal {
public:
    void Request() {
        {
            const std::lock_guard lock(m_mutex);
            m_requested = true;
        }
        m_changed.notify_all();
    }
    // Costs next to nothing: a job may ask for each of a million records.
    [[nodiscard]] bool Requested() const { return m_requested.load(std::memory_order_acquire); }
    // True when the whole duration passed, false as soon as the stop is requested.
    [[nodiscard]] bool WaitFor(std::chrono::milliseconds duration) const {
        std::unique_lock lock(m_mutex);
        return !m_changed.wait_for(lock, duration, [this] { return m_requested.load(); });
    }

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::atomic<bool> m_requested = false;  // written under the mutex
};

}  // namespace brennvar
