// Keys, as a user presses them: they go to the window in front.
#pragma once

#include <initializer_list>

#include "base/Windows_win.h"

namespace brennvar::test {

// One after the other, while the modifier is held (0: none).
void Type(std::initializer_list<WORD> keys, WORD modifier = 0);
// The window of the other program's thread that has its keyboard; null when none has.
[[nodiscard]] HWND FocusOf(HWND window);

}  // namespace brennvar::test
