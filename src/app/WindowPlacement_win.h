// Remembers for the user where the control center stood.
#pragma once

#include <optional>

#include "base/Windows_win.h"
#include "config/UserValues.h"

namespace brennvar {

struct WindowPlacement {
    RECT place{};  // screen coordinates, of the window as it is when it is not maximised
    bool isMaximised = false;
};

// Nothing when nothing is remembered.
[[nodiscard]] std::optional<WindowPlacement> ReadWindowPlacement(const UserValues& values);
void WriteWindowPlacement(HWND window, UserValues& values);
// The place moved and sized so that a window of at least this size lies inside the nearest work area.
[[nodiscard]] RECT FitPlacement(const RECT& place, SIZE least);

}  // namespace brennvar
