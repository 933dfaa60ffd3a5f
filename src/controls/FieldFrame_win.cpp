#include "controls/FieldFrame_win.h"

#include <algorithm>
#include <iterator>

#include "config/Contrast.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kHeight = 24;  // a row of lists and layouts
constexpr int kPadding = 6;
constexpr int kArrowSteps = 4;      // half the arrow's width, and its height
constexpr int kDisabledShare = 90;  // text, towards the page

}  // namespace

int FieldHeight() {
    return Scale(kHeight);
}

int FieldPadding() {
    return Scale(kPadding);
}

COLORREF FocusColour(const Palette& colours) {
    constexpr int kStep = 8, kWhole = 255;  // of the text in the accent
    const COLORREF grounds[] = {colours.page, colours.list, colours.listAlternate, colours.selection};
    for (int share = 0; share < kWhole; share += kStep) {
        const COLORREF colour = MixColours(colours.accent, colours.text, share);
        if (std::all_of(std::begin(grounds), std::end(grounds),
                        [colour](COLORREF ground) { return Contrast(colour, ground) >= kFrameContrast; })) {
            return colour;
        }
    }
    return colours.text;
}

COLORREF FieldGround(const Palette& colours, FieldState state) {
    return state == FieldState::Disabled || state == FieldState::ReadOnly ? colours.page : colours.list;
}

COLORREF FieldText(const Palette& colours, FieldState state) {
    return state == FieldState::Disabled ? MixColours(colours.quietText, colours.page, kDisabledShare)
                                         : colours.text;
}

void DrawFieldFrame(HDC dc, const RECT& place, const Palette& colours, FieldState state) {
    const COLORREF ground = FieldGround(colours, state);
    COLORREF outer = colours.fieldFrame;
    COLORREF inner = ground;
    if (state == FieldState::Focused) {
        outer = colours.accent;
        inner = FocusColour(colours);
    } else if (state == FieldState::Disabled) {
        outer = colours.frame2;
    }
    DrawFrame(dc, place, outer);
    DrawFrame(dc, Inset(place, 1), inner);
}

void DrawDropArrow(HDC dc, const RECT& place, COLORREF colour) {
    const int steps = Scale(kArrowSteps);
    const RECT box = Centred(place, {2 * steps, steps + 1});
    for (int i = 0; i < steps; ++i) {
        const LONG y = box.top + i;
        FillSolid(dc, {box.left + i, y, box.left + i + 1, y + 2}, colour);
        FillSolid(dc, {box.right - i - 1, y, box.right - i, y + 2}, colour);
    }
}

LRESULT AnswerFieldColours(HDC dc, const Palette& colours, FieldState state) {
    const COLORREF ground = FieldGround(colours, state);
    ::SetTextColor(dc, FieldText(colours, state));
    ::SetBkColor(dc, ground);
    ::SetDCBrushColor(dc, ground);
    return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
}

}  // namespace brennvar
