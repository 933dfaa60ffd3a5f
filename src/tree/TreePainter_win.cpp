#include "tree/TreePainter_win.h"

#include <algorithm>
#include <limits>

#include "config/Contrast.h"
#include "controls/FieldFrame_win.h"
#include "ui/ActionMark_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kRowHeight = 24;
constexpr int kHeaderHeight = 26;
constexpr int kHeaderLine = 2;
constexpr int kMargin = 8;
constexpr int kIndent = 16;  // of one level, and the room of an expand mark
constexpr int kPicture = 16;
constexpr int kGap = 6;
constexpr int kGlyph = 8;
constexpr int kMark = 3;        // wide
constexpr int kBarMargin = 4;   // of a bar, from the row's edges
constexpr int kBarRim = 4;      // beside the text
constexpr int kPillWidth = 88;  // so that those of a column are alike

constexpr int kCheckFrames = 6;      // rest, hot, pressed, and the same checked
constexpr int kBarShare = 40;        // of the quiet text's colour in the list's, of 255: text reads on it
constexpr int kUnfocusedShare = 96;  // of the list's ground in a selection without the focus, of 255

ActionMark MarkOf(Tone tone) {
    switch (tone) {
        case Tone::Allow: return ActionMark::Allow;
        case Tone::Deny: return ActionMark::Deny;
        default: return ActionMark::Ask;
    }
}

RECT Take(RECT& rest, int width, int gap) {
    const RECT place = Centred({rest.left, rest.top, rest.left + width, rest.bottom}, {width, width});
    rest.left += width + gap;
    return place;
}

// The colour, as far towards the text's as reading it on the ground takes.
COLORREF MadeReadable(COLORREF colour, COLORREF ground, COLORREF text) {
    COLORREF readable = colour;
    for (int share = 32; Contrast(readable, ground) < kTextContrast && share < 256; share += 32) {
        readable = MixColours(colour, text, share);
    }
    return readable;
}

// A triangle in steps of whole pixels, which stays sharp: points right, down, or, reversed, up.
void DrawTriangle(HDC dc, const RECT& place, int half, bool isSideways, bool isReversed, COLORREF colour) {
    const RECT box = Centred(place, isSideways ? SIZE{half, 2 * half - 1} : SIZE{2 * half - 1, half});
    for (int line = 0; line < half; ++line) {
        const LONG at = isReversed ? line : half - 1 - line;  // from the tip's side
        if (isSideways) {
            FillSolid(dc, {box.left + line, box.top + line, box.left + line + 1, box.bottom - line}, colour);
        } else {
            FillSolid(dc, {box.left + at, box.top + half - 1 - line, box.right - at, box.top + half - line},
                      colour);
        }
    }
}

}  // namespace

TreePainter::TreePainter(const Look& look, bool hasFixedLetters)
    : m_colours(look.colours),
      m_lineLeft(look.skin.GetSkinColor("GRADIENT_LEFT", 72, 188, 3)),
      m_lineRight(look.skin.GetSkinColor("GRADIENT_RIGHT", 255, 181, 106)),
      m_header(MixColours(look.colours.list, look.colours.page, 200)),
      m_isDark(IsDark(look.colours.list)),
      m_quietOnSelection(MadeReadable(look.colours.quietText, look.colours.selection, look.colours.text)),
      m_check(CSkinImage::Load(look.skin.GetSkinImagePath("CHECK_BUTTON_LIST", "check_button_list.png"))) {
    m_text.SetFont(hasFixedLetters ? look.fonts.Fixed() : look.fonts.Text());
    for (std::size_t tone = 0; tone < m_tones.size(); ++tone) {
        m_tones[tone] = ToneColour(look.skin, static_cast<Tone>(tone));
        m_pills[tone] = PillColour(look.skin, static_cast<Tone>(tone));
    }
}

int TreePainter::RowHeight() {
    return Scale(kRowHeight);
}

int TreePainter::HeaderHeight() {
    return Scale(kHeaderHeight);
}

CellPlaces TreePainter::PlaceParts(const TreeCell& cell, const TreeRow& row, const RECT& place,
                                   bool keepsExpander) {
    RECT rest = place;
    ::InflateRect(&rest, -Scale(kMargin), 0);
    CellPlaces places;
    if (keepsExpander) {
        rest.left += row.level * Scale(kIndent);
        const RECT expander = Take(rest, Scale(kIndent), Scale(kGap) / 3);
        if (row.hasChildren) places.expander = expander;
    }
    if (cell.checked) places.check = Take(rest, Scale(kPicture), Scale(kGap));
    if (cell.icon || cell.image) places.picture = Take(rest, Scale(kPicture), Scale(kGap));
    if (cell.glyph != CellGlyph::None) places.glyph = Take(rest, Scale(kGlyph), Scale(kGap));
    if (IsAction(cell.tone) && !cell.text.empty()) places.mark = Take(rest, Scale(kMarkSize), Scale(kMarkGap));
    // Parts that do not fit are not there.
    for (RECT* part : {&places.expander, &places.check, &places.picture, &places.glyph, &places.mark}) {
        if (part->right > place.right) *part = {};
    }
    rest.right = std::max(rest.right, rest.left);
    places.text = rest;
    return places;
}

bool TreePainter::IsCut(HDC dc, const TreeCell& cell, const CellPlaces& places) const {
    return m_text.Width(dc, cell.text, WidthOf(places.text)) > WidthOf(places.text);
}

int TreePainter::NeededWidth(HDC dc, const TreeCell& cell, const CellPlaces& places) const {
    return m_text.Width(dc, cell.text, std::numeric_limits<int>::max()) + Scale(kMargin) +
           static_cast<int>(places.text.left);
}

COLORREF TreePainter::RowGround(bool isAlternate, bool isSelected, bool hasFocus) const {
    const COLORREF rest = isAlternate ? m_colours.listAlternate : m_colours.list;
    if (!isSelected) return rest;
    return hasFocus ? m_colours.selection : MixColours(m_colours.selection, rest, kUnfocusedShare);
}

void TreePainter::PaintCell(HDC dc, const TreeCell& cell, const TreeRow& row, const CellPlaces& places,
                            const TreeColumn& column, Touch check, bool isSelected) {
    if (cell.bar > 0) PaintBar(dc, places.text, cell.bar, column.isNumber);
    if (!::IsRectEmpty(&places.expander)) {
        DrawTriangle(dc, places.expander, Scale(5), !row.isExpanded, false, m_colours.quietText);
    }
    if (!::IsRectEmpty(&places.check)) PaintCheck(dc, places.check, *cell.checked, check);
    const RECT& picture = places.picture;
    if (!::IsRectEmpty(&picture)) {
        if (cell.icon) {
            ::DrawIconEx(dc, picture.left, picture.top, cell.icon, WidthOf(picture), HeightOf(picture), 0, nullptr,
                         DI_NORMAL);
        } else {
            cell.image->DrawFrame(dc, picture, cell.imageFrame, cell.imageFrameCount);
        }
    }
    if (!::IsRectEmpty(&places.mark)) PaintAction(dc, cell, places);
    const COLORREF colour = ColourOf(cell, isSelected);
    if (!::IsRectEmpty(&places.glyph)) PaintGlyph(dc, places.glyph, cell.glyph, colour);
    ::SetTextColor(dc, colour);
    m_text.Draw(dc, places.text, cell.text, column.isNumber,
                column.isPath ? CellText::Cut::Path : CellText::Cut::End);
}

void TreePainter::PaintBar(HDC dc, const RECT& text, std::uint8_t bar, bool isFromRight) const {
    RECT place = text;
    ::InflateRect(&place, Scale(kBarRim), -Scale(kBarMargin));
    // However little it is, it is something.
    const int length = std::max(1, ::MulDiv(WidthOf(place), bar, kFullBar));
    (isFromRight ? place.left : place.right) = isFromRight ? place.right - length : place.left + length;
    FillSolid(dc, place, MixColours(m_colours.list, m_colours.quietText, kBarShare));
}

void TreePainter::PaintGlyph(HDC dc, const RECT& place, CellGlyph glyph, COLORREF colour) const {
    if (glyph == CellGlyph::Bar) {
        FillSolid(dc, Centred(place, {WidthOf(place), Scale(2)}), colour);
        return;
    }
    const CSelect pen(dc, ::GetStockObject(DC_PEN));
    const CSelect brush(dc, ::GetStockObject(glyph == CellGlyph::Filled ? DC_BRUSH : NULL_BRUSH));
    ::SetDCPenColor(dc, colour);
    ::SetDCBrushColor(dc, colour);
    ::Ellipse(dc, place.left, place.top, place.right, place.bottom);
}

void TreePainter::PaintMarks(HDC dc, const RECT& row, bool isSelected, RowMark mark) const {
    RECT bar{row.left, row.top, row.left + Scale(kMark), row.bottom};
    if (isSelected) {
        FillSolid(dc, bar, m_colours.accent);
        ::OffsetRect(&bar, Scale(kMark + 1), 0);
    }
    if (mark == RowMark::None) return;
    if (mark == RowMark::New) return FillSolid(dc, bar, m_colours.accent);
    // Gone: four pieces, with room for as many between them.
    const LONG piece = std::max(1, HeightOf(row) / 8);
    for (LONG top = row.top; top < row.bottom; top += 2 * piece) {
        FillSolid(dc, {bar.left, top, bar.right, std::min(top + piece, row.bottom)}, m_colours.quietText);
    }
}

COLORREF TreePainter::ColourOf(const TreeCell& cell, bool isSelected) {
    if (isSelected && !cell.textColour && cell.tone == Tone::Muted) return m_quietOnSelection;
    return cell.textColour ? Readable(*cell.textColour) : m_tones.at(static_cast<std::size_t>(cell.tone));
}

// Colours are chosen for a light list. A dark one shows them as much lighter as reading takes.
COLORREF TreePainter::Readable(COLORREF colour) {
    if (!m_isDark || colour == m_wanted) return m_isDark ? m_readable : colour;
    m_wanted = colour;
    m_readable = MadeReadable(colour, m_colours.list, m_colours.text);
    return m_readable;
}

void TreePainter::PaintCheck(HDC dc, const RECT& place, bool isChecked, Touch touch) const {
    if (m_check) {
        m_check.DrawFrame(dc, place, static_cast<int>(touch) + (isChecked ? 3 : 0), kCheckFrames);
        return;
    }
    FillSolid(dc, place, touch == Touch::Pressed ? m_colours.selection : m_colours.list);
    DrawFrame(dc, place, touch == Touch::Rest ? m_colours.quietText : m_colours.accent);
    if (isChecked) FillSolid(dc, Inset(place, Scale(4)), m_colours.text);
}

void TreePainter::PaintAction(HDC dc, const TreeCell& cell, const CellPlaces& places) {
    if (const std::optional<COLORREF> ground = m_pills.at(static_cast<std::size_t>(cell.tone))) {
        const LONG left = places.mark.left - Scale(kMarkInset);
        const LONG middle = (places.text.top + places.text.bottom) / 2;
        const LONG top = middle - Scale(kPillHeight) / 2;
        const int word = m_text.Width(dc, cell.text, WidthOf(places.text));
        const LONG right = std::max<LONG>(left + Scale(kPillWidth), places.text.left + word + Scale(kMarkGap));
        DrawPill(dc, {left, top, std::min(right, places.text.right + Scale(kMarkGap)), top + Scale(kPillHeight)},
                 *ground);
    }
    DrawActionMark(dc, places.mark, MarkOf(cell.tone));
}

void TreePainter::PaintFocus(HDC dc, const RECT& row) const {
    DrawFrame(dc, row, FocusColour(m_colours));
}

void TreePainter::PaintHeaderGround(HDC dc, const RECT& header) const {
    const LONG line = header.bottom - Scale(kHeaderLine);
    FillSolid(dc, {header.left, header.top, header.right, line}, m_header);
    FillGradient(dc, {header.left, line, header.right, header.bottom}, m_lineLeft, m_lineRight, false);
}

void TreePainter::PaintHeaderCell(HDC dc, const RECT& place, bool hasDivider, const TreeColumn& column, Sort sort,
                                  Touch touch) {
    RECT inner = place;
    inner.bottom -= Scale(kHeaderLine);
    if (touch != Touch::Rest) {
        const int share = touch == Touch::Hot ? 110 : 200;
        FillSolid(dc, inner, MixColours(m_header, m_colours.frame2, share));
    }
    const RECT divider{inner.right - 1, inner.top + Scale(5), inner.right, inner.bottom - Scale(5)};
    if (hasDivider) FillSolid(dc, divider, m_colours.frame2);
    ::InflateRect(&inner, -Scale(kMargin), 0);
    if (sort != Sort::None && WidthOf(inner) > 3 * Scale(kMargin)) {
        RECT arrow = inner;
        arrow.left = inner.right = inner.right - Scale(kMargin) - Scale(4);
        DrawTriangle(dc, arrow, Scale(4), false, sort == Sort::Up, m_colours.quietText);
        inner.right -= Scale(4);
    }
    ::SetTextColor(dc, m_colours.quietText);
    m_text.Draw(dc, inner, column.title, column.isNumber, CellText::Cut::End);
}

}  // namespace brennvar
