// How a tree's cells, header and empty text look. Knows no window: all places are given.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "tree/CellText_win.h"
#include "tree/TreeRows_win.h"
#include "ui/Look_win.h"
#include "ui/SkinImage_win.h"
#include "ui/Touch.h"

namespace brennvar {

// Where a cell's parts stand; empty where it has none.
struct CellPlaces {
    RECT expander{};
    RECT check{};
    RECT picture{};
    RECT glyph{};
    RECT mark{};  // of an action
    RECT text{};
};

class TreePainter {
public:
    // Borrows the look's fonts.
    TreePainter(const Look& look, bool hasFixedLetters);

    [[nodiscard]] const Palette& Colours() const { return m_colours; }
    [[nodiscard]] HFONT Font() const { return m_text.Font(); }
    [[nodiscard]] static int RowHeight();
    [[nodiscard]] static int HeaderHeight();

    // Room for expand marks is kept in the first column of a list with levels.
    [[nodiscard]] static CellPlaces PlaceParts(const TreeCell& cell, const TreeRow& row, const RECT& place,
                                               bool keepsExpander);
    // True when the text does not fit. The font must be selected.
    [[nodiscard]] bool IsCut(HDC dc, const TreeCell& cell, const CellPlaces& places) const;
    // Pixels that the cell needs to show all of it.
    [[nodiscard]] int NeededWidth(HDC dc, const TreeCell& cell, const CellPlaces& places) const;

    // The ground of a row; the font must be selected and the background mode transparent for everything below.
    [[nodiscard]] COLORREF RowGround(bool isAlternate, bool isSelected, bool hasFocus) const;
    void PaintCell(HDC dc, const TreeCell& cell, const TreeRow& row, const CellPlaces& places,
                   const TreeColumn& column, Touch check, bool isSelected);
    // At the row's left end: that it is selected, and beside that what has become of it.
    void PaintMarks(HDC dc, const RECT& row, bool isSelected, RowMark mark) const;
    void PaintFocus(HDC dc, const RECT& row) const;

    enum class Sort { None, Up, Down };
    void PaintHeaderGround(HDC dc, const RECT& header) const;
    // The last column at the list's edge has no divider.
    void PaintHeaderCell(HDC dc, const RECT& place, bool hasDivider, const TreeColumn& column, Sort sort,
                         Touch touch);

private:
    void PaintBar(HDC dc, const RECT& text, std::uint8_t bar, bool isFromRight) const;
    void PaintGlyph(HDC dc, const RECT& place, CellGlyph glyph, COLORREF colour) const;
    void PaintCheck(HDC dc, const RECT& place, bool isChecked, Touch touch) const;
    [[nodiscard]] COLORREF Readable(COLORREF colour);
    [[nodiscard]] COLORREF ColourOf(const TreeCell& cell, bool isSelected);
    void PaintAction(HDC dc, const TreeCell& cell, const CellPlaces& places);

    Palette m_colours;
    COLORREF m_lineLeft;  // of the line below the header
    COLORREF m_lineRight;
    COLORREF m_header;
    bool m_isDark;
    COLORREF m_quietOnSelection;
    std::array<COLORREF, kToneCount> m_tones{};
    std::array<std::optional<COLORREF>, kToneCount> m_pills{};  // the ground that a tone needs
    COLORREF m_wanted = CLR_INVALID;  // the last colour that was made readable, and what became of it
    COLORREF m_readable = CLR_INVALID;
    CellText m_text;
    CSkinImage m_check;
};

}  // namespace brennvar
