// Pictures of other programs' windows.
#pragma once

#include <string>

#include "base/Windows_win.h"

namespace brennvar::test {

// The corners of the window, with its menus and the windows that it owns when these are wanted as well.
[[nodiscard]] RECT PlaceOfWindow(HWND window, bool withOwned);

// Waits until the windows of the program have been painted and what is seen there no longer changes, and writes it
// to the file (BMP). False when it does not come to rest, or without such a file.
[[nodiscard]] bool WritePicture(HWND window, const RECT& place, const std::string& path);

}  // namespace brennvar::test
