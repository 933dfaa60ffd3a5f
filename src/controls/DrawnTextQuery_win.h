// The message with which automation and tests read a text that a window draws itself, by the text's number. It
// carries whole numbers only, so that it can be sent from another process, and is answered by every window that
// holds such texts.
//
// wParam: the number of the text; lParam: how many characters come before those that are wanted. The answer is 0
// for a number that the window does not have, else kDrawnTextIsThere and the next four characters, one byte each in
// the font's character set, the first of them lowest; behind the end of the text they are 0.
#pragma once

#include <cstdint>

#include "base/Windows_win.h"

namespace brennvar {

// Above all other messages of our own, which are counted from WM_APP on.
inline constexpr UINT kDrawnTextQuery = WM_APP + 0x2000;
inline constexpr std::uint64_t kDrawnTextIsThere = 1ULL << 32;
inline constexpr std::size_t kDrawnTextPiece = 4;

}  // namespace brennvar
