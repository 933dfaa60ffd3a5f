// Where the notification area is on this screen. User-interface thread only.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

// Of the task bar's window, else of what the shell reports, else the lower right corner of the work area.
[[nodiscard]] RECT GetTaskbarNotifyRect();
// What a balloon points at there.
[[nodiscard]] RECT GetTaskbarIconsRect();

}  // namespace brennvar
