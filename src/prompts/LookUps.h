// Look-ups for a question, done on queues, of which what has not come within a limit is left out. Whoever asks
// every 100 ms whether they are over also keeps the limit. User-interface thread.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "base/Clock.h"
#include "base/TaskQueue.h"

namespace brennvar {

class LookUps {
public:
    explicit LookUps(const Clock& clock) : m_clock(clock) {}
    LookUps(const LookUps&) = delete;
    LookUps& operator=(const LookUps&) = delete;
    ~LookUps() { End(); }

    // Begins anew: what is still looked up is not waited for any more, and what of it has not begun is not done.
    void Begin(std::chrono::milliseconds limit) {
        End();
        m_round = std::make_shared<Round>();
        m_start = m_clock.Elapsed();
        m_limit = limit;
        m_missing = 0;
    }
    void End() { m_round->isOver = true; }

    // Has look done on the queue; take gets what it finds, or an empty Result, unless that comes too late. It may
    // begin anew.
    template <class Result>
    void Find(TaskQueue& queue, std::function<Result()> look, std::function<void(Result)> take) {
        ++m_missing;
        queue.Ask<Result>([round = m_round, look = std::move(look)] { return round->isOver ? Result() : look(); },
                          [this, round = m_round, take = std::move(take)](std::optional<Result> found) {
                              if (round->isOver) return;
                              --m_missing;
                              take(std::move(found).value_or(Result()));
                          });
    }

    [[nodiscard]] bool AllFound() const { return m_missing == 0; }
    [[nodiscard]] bool IsTimeUp() const { return m_clock.Elapsed() - m_start >= m_limit; }

private:
    // The tasks share it, so that they know when nobody waits for them.
    struct Round {
        std::atomic<bool> isOver{false};
    };

    const Clock& m_clock;
    std::shared_ptr<Round> m_round = std::make_shared<Round>();
    std::chrono::milliseconds m_start{};
    std::chrono::milliseconds m_limit{};
    int m_missing = 0;
};

}  // namespace brennvar
