// Pictures of other programs' windows.
#pragma once

#include <string>

#include "base/Windows_win.h"

namespace brennvar::test {

// What is seen of the window on the screen.
[[nodiscard]] RECT PlaceOfWindow(HWND window);
// The same for all other windows of its program, menus included; empty when there are none.
[[nodiscard]] RECT PlaceOfOthers(HWND window);

// Waits until the windows of the program have been painted and what is seen there no longer changes, and writes it
// to the file (BMP). False when it does not come to rest, or without such a file.
[[nodiscard]] bool WritePicture(HWND window, const RECT& place, const std::string& path);

}  // namespace brennvar::test
