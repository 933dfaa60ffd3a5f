// What fields to be filled in share (edit field, combo box, address box): their frame, ground and text colours.
#pragma once

#include "ui/Look_win.h"

namespace brennvar {

// Two lines of a pixel each, outer and inner, whatever the resolution.
inline constexpr int kFieldFrame = 2;
// Of a field of one line. Pixels of the screen.
[[nodiscard]] int FieldHeight();
// Between frame and text, left and right. Pixels of the screen.
[[nodiscard]] int FieldPadding();

// The part of a field that the arrow stands in, at 96 pixels per inch.
inline constexpr int kDropArrowWidth = 24;

enum class FieldState {
    Rest,
    Focused,   // the accent, and within it the colour that marks the focus
    Disabled,  // cannot be worked with
    ReadOnly,  // can be read and copied
};

// Of the line that marks what has the keyboard: the accent, brought towards the text just so far that it is told
// from the grounds of pages, lists and selected rows.
[[nodiscard]] COLORREF FocusColour(const Palette& colours);
[[nodiscard]] COLORREF FieldGround(const Palette& colours, FieldState state);
[[nodiscard]] COLORREF FieldText(const Palette& colours, FieldState state);
void DrawFieldFrame(HDC dc, const RECT& place, const Palette& colours, FieldState state);
// The tip that points down where something can be chosen, in the middle of the place; two pixels strong.
void DrawDropArrow(HDC dc, const RECT& place, COLORREF colour);
// The answer to WM_CTLCOLOREDIT and WM_CTLCOLORSTATIC: sets the DC's colours. The brush is the DC's own.
[[nodiscard]] LRESULT AnswerFieldColours(HDC dc, const Palette& colours, FieldState state);

}  // namespace brennvar
