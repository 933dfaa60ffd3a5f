// Takes a window into the notification area and back. User-interface thread only.
#pragma once

#include <functional>

#include "base/Windows_win.h"

namespace brennvar {

// What the desktop does for it, replaced by tests.
struct DesktopAnimation {
    std::function<bool()> isOn;  // the user's setting for animated minimising
    std::function<void(HWND window, const RECT& from, const RECT& to)> run;
    [[nodiscard]] static DesktopAnimation Current();
};

void MinimiseToTray(HWND window, const DesktopAnimation& animation = DesktopAnimation::Current());
// Also back from the task bar, and to the foreground. A dialog over the window gets the keyboard.
void RestoreFromTray(HWND window, const DesktopAnimation& animation = DesktopAnimation::Current());

}  // namespace brennvar
