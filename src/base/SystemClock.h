// The real clock. Its waits end early when the stop signal that it was given is requested.
#pragma once

#include "base/Clock.h"
#include "base/StopSignal.h"

namespace brennvar {

class SystemClock final : public Clock {
public:
    // The signal is borrowed and must outlive the clock.
    explicit SystemClock(const StopSignal& stop) : m_stop(stop) {}
    [[nodiscard]] FileTime UtcNow() const override;
    [[nodiscard]] LocalDate Today() const override;
    [[nodiscard]] std::chrono::milliseconds Elapsed() const override;
    bool Sleep(std::chrono::milliseconds duration) override;

private:
    const StopSignal& m_stop;
};

}  // namespace brennvar
