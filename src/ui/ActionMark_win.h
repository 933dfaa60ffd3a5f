// What is done about something, told by shape and colour: a disc with a tick, a cross, a question mark or a line,
// and the pill on which it stands beside its word. The same in questions and in lists, in every skin.
#pragma once

#include <cstdint>

#include "base/Windows_win.h"

namespace brennvar {

enum class ActionMark : std::uint8_t { Allow, Deny, Ask, None };

// At 96 pixels per inch: a pill's height, the disc's side, from the pill's end to the disc, from the disc to the
// word and from the word to the other end.
inline constexpr int kPillHeight = 20;
inline constexpr int kMarkSize = 14;
inline constexpr int kMarkInset = 3;
inline constexpr int kMarkGap = 6;

[[nodiscard]] COLORREF ActionColour(ActionMark mark);
struct MarkColours {
    COLORREF disc;
    COLORREF shape;
};
// In a square: white on the mark's colour, or as told.
void DrawActionMark(HDC dc, const RECT& place, ActionMark mark);
void DrawActionMark(HDC dc, const RECT& place, ActionMark mark, const MarkColours& colours);
// What makes a fact suspicious: an orange triangle. In a square.
void DrawWarningTriangle(HDC dc, const RECT& place);
// What a click on it takes away: a balloon, a text that is searched for. In a square, with room around the strokes.
void DrawClosingCross(HDC dc, const RECT& place, COLORREF colour);
// Stands for a program that nobody knows: a dashed frame with a question mark. In a square.
void DrawUnknownProgram(HDC dc, const RECT& place, COLORREF colour);
// With round ends.
void DrawPill(HDC dc, const RECT& place, COLORREF colour);

}  // namespace brennvar
