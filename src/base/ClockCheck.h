// Notices when somebody has set the system clock. Asked about once a second on the user-interface thread.
#pragma once

#include <chrono>

#include "base/Clock.h"

namespace brennvar {

class ClockCheck {
public:
    enum class Jump { None, Past, Future };

    // The moment from which the first tick is measured: the system's time, and Clock::Elapsed.
    ClockCheck(FileTime now, std::chrono::milliseconds elapsed) : m_lastSeen(now), m_lastElapsed(elapsed) {}

    // Compares how far the system's clock has come since the previous tick with the time that has passed: a tick
    // that was held back by a busy thread, or for hours by a machine that slept, is none. Back by any amount, or
    // behind by half a second, is a jump to the past; ahead by more than 20 seconds is one to the future. Each jump
    // is reported once, because now is what the next tick compares with.
    [[nodiscard]] Jump Tick(FileTime now, std::chrono::milliseconds elapsed);

private:
    FileTime m_lastSeen;
    std::chrono::milliseconds m_lastElapsed;
};

}  // namespace brennvar
