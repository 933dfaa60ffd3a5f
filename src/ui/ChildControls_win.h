// Small steps that every window takes with its child controls.
#pragma once

#include <string>

#include "base/Windows_win.h"

namespace brennvar {

[[nodiscard]] std::string TextOfWindow(HWND window);
// Sets a text only when it differs, so that a text that is refreshed every second does not flicker.
void SetTextIfChanged(HWND control, const std::string& text);
// Takes the border away that Windows draws around some controls, and asks for the place of the client area anew.
void RemoveBorder(HWND control);
// Registers classes of the common controls (ICC_ flags) that a program without such a control has not needed so
// far.
void RequireWindowClasses(DWORD classes);
// The size of a text in this font, broken into lines of at most this width (0: not broken).
[[nodiscard]] SIZE MeasureText(HFONT font, const std::string& text, int width, UINT moreFormat = 0);

}  // namespace brennvar
