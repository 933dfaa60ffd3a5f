// Any program of the user's may send and post messages to our windows. Which of them are believed: Windows takes
// care that a pointer of a message of its own below WM_USER can be read, but not that there is one; whatever is
// told about the beginning and the end of a window counts only while that window really begins or ends.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

// While it lasts, windows of this thread may end: by us, or by Windows, which could not make all of one.
class WindowsMayEnd {
public:
    WindowsMayEnd();
    WindowsMayEnd(const WindowsMayEnd&) = delete;
    WindowsMayEnd& operator=(const WindowsMayEnd&) = delete;
    ~WindowsMayEnd();
};
// Ends a window of this thread, with its children and the windows that it owns.
void EndWindow(HWND window);
// For WM_DESTROY and WM_NCDESTROY: false when somebody else has only sent or posted them. Every window of ours
// therefore begins and ends during a WindowsMayEnd, or by EndWindow.
[[nodiscard]] bool IsWindowEnding();

// False for a message whose lParam has to be an address and is none: no address lies in the first 64 KB.
[[nodiscard]] bool HasNeededAddress(UINT message, WPARAM wParam, LPARAM lParam);

// What is to be drawn is one of the windows of this thread, or an item in a menu, and no larger than the screen.
[[nodiscard]] bool IsDrawable(const DRAWITEMSTRUCT& item);

}  // namespace brennvar
