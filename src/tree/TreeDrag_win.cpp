#include "tree/TreeDrag_win.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "ui/Paint_win.h"

namespace brennvar {

bool TreeDrag::IsPossible() const {
    return m_state.events.rowsDragged && m_state.events.canDragRows && m_state.events.canDragRows();
}

void TreeDrag::Press(int row, POINT point) {
    m_row = row;
    m_start = point;
}

void TreeDrag::Move(POINT point) {
    const bool isFar = std::abs(point.x - m_start.x) > ::GetSystemMetrics(SM_CXDRAG) ||
                       std::abs(point.y - m_start.y) > ::GetSystemMetrics(SM_CYDRAG);
    if (m_row < 0 || (!IsUnderWay() && !isFar)) return;
    const RECT& rows = m_places.Rows();
    const LONG height = TreePainter::RowHeight();
    const LONG y = std::clamp(point.y, rows.top, std::max(rows.top, rows.bottom - 1));
    SetBefore(std::min<int>(m_places.RowCount(), m_places.FirstRow() + (y - rows.top + height / 2) / height));
}

void TreeDrag::OnTimer(POINT mouse) {
    if (!IsUnderWay()) return;
    const RECT& rows = m_places.Rows();
    const int edge = TreePainter::RowHeight() / 2;
    const int by = mouse.y < rows.top + edge ? -1 : mouse.y >= rows.bottom - edge ? 1 : 0;
    if (by == 0) return;
    const int first = m_places.FirstRow();
    m_state.ScrollTo(first + by);
    if (m_places.FirstRow() == first) return;
    m_state.Repaint(rows);  // the line has gone with its row
    Move(mouse);
}

void TreeDrag::End() {
    SetBefore(-1);
    m_row = -1;
}

void TreeDrag::SetBefore(int row) {
    if (row == m_before) return;
    m_state.Repaint(Line());
    m_before = row;
    m_state.Repaint(Line());
}

RECT TreeDrag::Line() const {
    if (!IsUnderWay()) return {};
    const RECT& rows = m_places.Rows();
    const LONG width = Scale(2);
    const LONG top =
        std::clamp(m_places.Row(m_before).top - width / 2, rows.top, std::max(rows.top, rows.bottom - width));
    return {rows.left, top, rows.right, top + width};
}

}  // namespace brennvar
