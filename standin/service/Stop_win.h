// The order to end: one event that every wait of the stand-in includes. It has a name, so that a test can set it.
#pragma once

#include "base/Handles_win.h"

namespace brennvar::standin {

inline constexpr char kStopEventName[] = "BrennvarStandInStop";

class Stop {
public:
    // Any thread. An order left from an earlier run is taken back.
    Stop() : m_event(::CreateEventA(nullptr, TRUE, FALSE, kStopEventName)) { ::ResetEvent(m_event.Get()); }

    void Request() const { ::SetEvent(m_event.Get()); }
    [[nodiscard]] bool Requested() const { return Sleep(0); }
    // False when the whole time has passed, true as soon as the stop is requested.
    [[nodiscard]] bool Sleep(DWORD milliseconds) const {
        return ::WaitForSingleObject(m_event.Get(), milliseconds) == WAIT_OBJECT_0;
    }
    [[nodiscard]] HANDLE Event() const { return m_event.Get(); }

private:
    UniqueEvent m_event;
};

}  // namespace brennvar::standin
