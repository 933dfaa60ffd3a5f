// Paints a tree: only what is invalid, and of that only what is not in the sheet of rows already.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tree/RowSheet_win.h"
#include "tree/TreePointer_win.h"
#include "tree/TreeState_win.h"
#include "ui/FocusOnce_win.h"
#include "ui/StripBuffer_win.h"

namespace brennvar {

class TreeCanvas {
public:
    // The pointer says what lies below the mouse.
    TreeCanvas(TreeState& state, const TreePointer& pointer)
        : m_state(state), m_places(state.Places()), m_pointer(pointer) {}

    void Begin(const Look& look);
    // The arrow in the header; column -1: none.
    void SetSortMark(int column, bool isAscending);

    // WM_PAINT
    void PaintWindow();
    // The DC is the window's: what is painted shows at once, and what is not invalid is clipped.
    void Paint(HDC dc, const RECT& invalid);

private:
    void PaintHeader(HDC dc, const RECT& invalid);
    void PaintRows(HDC dc, const RECT& invalid);
    void PaintRest(HDC dc, const RECT& rest);
    void PaintRow(HDC dc, int row, const RECT& place, const RECT& invalid);
    // A row and all that its look is made of; what is out of sight at the sides is left out.
    struct RowContent {
        struct Cell {
            int column;
            LONG left;
            LONG right;
            Touch check;
            TreeCell content;
        };
        COLORREF ground;
        TreeRow state;
        bool isSelected;
        bool showsFocus;
        std::vector<Cell> cells;
    };
    void ReadRow(int row, int width);
    // In bytes, as a key of the sheet.
    void DescribeRow(int width);
    void PaintContent(HDC dc, const RECT& place) const;
    [[nodiscard]] bool HasFocus() const { return FocusOnce::Window() == m_state.Window(); }

    TreeState& m_state;
    const TreePlaces& m_places;
    const TreePointer& m_pointer;
    std::unique_ptr<ScrollPictures> m_pictures;
    CStripBuffer m_buffer;  // the header
    RowSheet m_sheet;
    RowContent m_row{};         // the one that is being painted; these two are kept for their memory
    std::string m_description;  // of it
    int m_sortColumn = -1;
    TreePainter::Sort m_sort = TreePainter::Sort::None;
};

}  // namespace brennvar
