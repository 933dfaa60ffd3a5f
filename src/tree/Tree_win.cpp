#include "tree/Tree_win.h"

#include "tree/TreeMessages_win.h"
// windows.h must stand before windowsx.h.
#include <windowsx.h>

namespace brennvar {

bool CTree::Create(const TreeSetup& setup, const Look& look, std::span<const TreeColumn> columns, TreeRows& rows) {
    m_state.Begin(setup, look, columns, rows);
    m_canvas.Begin(look);
    return CWindow::Create({.parent = setup.parent,
                            .text = {},
                            .style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS,
                            .id = setup.id,
                            .className = kTreeClass});
}

bool CTree::OnCreate() {
    Refresh();
    return true;
}

std::optional<LRESULT> CTree::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: m_canvas.PaintWindow(); return 0;
        case WM_GETDLGCODE: return DialogCode(reinterpret_cast<const MSG*>(lParam));
        case WM_SETCURSOR:
            if (LOWORD(lParam) == HTCLIENT && m_pointer.SetCursor()) return TRUE;
            return std::nullopt;
        case WM_RBUTTONDOWN: m_pointer.OnRightDown({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); return 0;
        default: return m_automation.Answer(message, wParam, lParam);
    }
}

LRESULT CTree::DialogCode(const MSG* message) const {
    // Esc ends a drag before it ends a dialog.
    const bool isEscape = message && message->message == WM_KEYDOWN && message->wParam == VK_ESCAPE;
    const LRESULT wanted = isEscape && m_pointer.Drag().IsUnderWay() ? DLGC_WANTMESSAGE : 0;
    return m_keyboard.DialogCode(message) | wanted;
}

bool CTree::OnKeyDown(UINT key) {
    if (key == VK_ESCAPE && m_pointer.CancelDrag()) return true;
    return m_keyboard.OnKeyDown(key);
}

void CTree::OnTimer(UINT_PTR id) {
    if (id == TreePointer::kTimer) m_pointer.OnTimer();
    if (id == TreeTip::kTimer) m_state.Tip().OnTimer();
}

void CTree::OnContextMenu(POINT point) {
    if (!events.contextMenu) return;
    m_state.Tip().Hide();
    const RECT& rows = m_state.Places().Rows();
    if (point.x != -1 || point.y != -1) {
        POINT inside = point;
        ::ScreenToClient(Window(), &inside);
        if (::PtInRect(&rows, inside)) events.contextMenu(RowAt(inside), point);
        return;
    }
    const int row = m_state.Source().Has(FocusedRow()) ? FocusedRow() : -1;
    POINT place{rows.left + Scale(16), rows.top};
    if (row >= 0) {
        EnsureVisible(row);
        place.y = m_state.Places().Row(row).bottom;
    }
    ::ClientToScreen(Window(), &place);
    events.contextMenu(row, place);
}

void CTree::Refresh() {
    if (!Window()) return;
    (void)m_pointer.CancelDrag();  // the rows may be others now
    m_state.Refresh();
}

void CTree::RefreshLooks() {
    if (Window()) m_state.Refresh();
}

int CTree::SelectedRow() const {
    const auto& ranges = SelectedRows().Ranges();
    return ranges.empty() ? -1 : ranges.front().first;
}

void CTree::SelectRow(int row) {
    RowRanges rows;
    if (row >= 0) rows.Add(row, row);
    SetSelection(std::move(rows), row);
}

std::vector<int> CTree::ColumnWidths() const {
    const ColumnLayout& columns = m_state.Places().Columns();
    std::vector<int> widths;
    const int unit = Scale(96);
    for (int column = 0; column < columns.Count(); ++column) {
        widths.push_back(::MulDiv(columns.WantedWidth(column), 96, unit));
    }
    return widths;
}

void CTree::SetColumnWidths(std::span<const int> widths) {
    std::vector<int> pixels;
    for (const int width : widths) pixels.push_back(Scale(width));
    m_state.Places().Columns().Restore(pixels);
    m_state.LayOut();
}

void CTree::WidenFor(int column, const std::string& text) {
    if (Window()) m_state.WidenFor(column, text);
}

}  // namespace brennvar
