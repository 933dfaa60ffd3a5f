// Notices when somebody has set the system clock. Asked once a second on the user-interface thread.
#pragma once

#include "base/Clock.h"

namespace brennvar {

class ClockCheck {
public:
    enum class Jump { None, Past, Future };

    // now: the time from which the first tick is measured.
    explicit ClockCheck(FileTime now) : m_lastSeen(now) {}

    // Compares now with the previous tick: back by any amount is a jump to the past, forward by more than
    // 20 seconds one to the future. Each jump is reported once, because now is what the next tick compares with.
    [[nodiscard]] Jump Tick(FileTime now);

    // The next tick only takes the time over, as after a sleep of the machine, when no tick could come.
    void SkipNext() { m_skipNext = true; }

private:
    FileTime m_lastSeen;
    bool m_skipNext = false;
};

}  // namespace brennvar
