// Paints a tree: only what is invalid, row by row through one buffer that is kept.
#pragma once

#include <memory>

#include "tree/TreePointer_win.h"
#include "tree/TreeState_win.h"
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
    [[nodiscard]] bool HasFocus() const { return ::GetFocus() == m_state.Window(); }

    TreeState& m_state;
    const TreePlaces& m_places;
    const TreePointer& m_pointer;
    std::unique_ptr<ScrollPictures> m_pictures;
    CStripBuffer m_buffer;
    int m_sortColumn = -1;
    TreePainter::Sort m_sort = TreePainter::Sort::None;
};

}  // namespace brennvar
