// What a list or tree shows, asked for row by row when it is painted. Nothing is kept: a million rows cost what is
// visible of them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Windows_win.h"
#include "config/SkinTones.h"
#include "tree/CellMarks.h"

namespace brennvar {

class CSkinImage;

struct TreeRow {
    int level = 0;  // 0: top row
    bool hasChildren = false;
    bool isExpanded = false;
    RowMark mark = RowMark::None;
};

inline constexpr std::uint8_t kFullBar = 255;

struct TreeCell {
    std::string text;
    HICON icon = nullptr;               // small, borrowed until the cell has been painted
    const CSkinImage* image = nullptr;  // instead of an icon, borrowed likewise
    int imageFrame = 0;                 // of frames side by side
    int imageFrameCount = 1;
    std::uint8_t bar = 0;         // quiet, behind the text, so much of kFullBar long
    std::optional<bool> checked;  // the cell has a check box
    CellGlyph glyph = CellGlyph::None;
    Tone tone = Tone::Plain;
    std::optional<COLORREF> textColour;  // instead of the tone's, for lines of output
};

// Implemented by the owner of a tree. Rows are numbered from 0 in the order in which they are shown; rows below a
// collapsed one do not count (tree/VisibleRows.h keeps such numbers). The tree never asks for a row at or behind
// RowCount(). What a function throws is dropped, and the row stays empty.
class TreeRows {
public:
    virtual ~TreeRows() = default;
    [[nodiscard]] virtual int RowCount() const = 0;
    [[nodiscard]] virtual TreeCell Cell(int row, int column) const = 0;
    // The same without its picture, for those who do not see it: no file is read for it.
    [[nodiscard]] virtual TreeCell Words(int row, int column) const { return Cell(row, column); }
    // What the tip of a cell says, when that is more than its text.
    [[nodiscard]] virtual std::string Tip(int /*row*/, int /*column*/) const { return {}; }
    // Only trees, and lists that mark rows, have something to say to these.
    [[nodiscard]] virtual TreeRow Row(int /*row*/) const { return {}; }
    // The user opens or closes a row. The tree looks at RowCount() anew afterwards.
    virtual void SetExpanded(int /*row*/, bool /*isExpanded*/) {}
};

struct TreeColumn {
    std::string title;
    // At 96 pixels per inch.
    int width = 0;
    int minimalWidth = 32;
    bool isNumber = false;   // aligned right
    bool takesRoom = false;  // gets what the others leave, at least its minimal width
    bool isPath = false;     // cut in the middle, so that the file name stays
    int yields = 0;          // as ColumnLayout::Column
    // FitToContent leaves room for these, whether or not a row holds them now.
    std::vector<std::string> longest{};
};

}  // namespace brennvar
