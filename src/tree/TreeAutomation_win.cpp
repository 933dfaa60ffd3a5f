// What a tree tells automation and screen readers. The messages are explained in tree/TreeMessages_win.h.
#include <algorithm>
#include <cstring>

#include "tree/TreeMessages_win.h"
#include "tree/Tree_win.h"
// windows.h must stand before windowsx.h.
#include <windowsx.h>

namespace brennvar {
namespace {

LRESULT Packed(LONG x, LONG y) {
    return MAKELPARAM(x, y);
}

// What the messages of Windows' own scroll bars ask for.
int PositionFor(const CScrollBar& bar, WORD request) {
    switch (request) {
        case SB_LINEUP: return bar.PositionAfter(CScrollBar::Part::ArrowBack);
        case SB_LINEDOWN: return bar.PositionAfter(CScrollBar::Part::ArrowForward);
        case SB_PAGEUP: return bar.PositionAfter(CScrollBar::Part::PageBack);
        case SB_PAGEDOWN: return bar.PositionAfter(CScrollBar::Part::PageForward);
        case SB_TOP: return 0;
        case SB_BOTTOM: return bar.Range().LastPosition();
        default: return bar.Range().position;
    }
}

}  // namespace

std::optional<LRESULT> CTree::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT: PaintWindow(); return 0;
        case WM_GETDLGCODE: return OnGetDialogCode(lParam);
        case WM_SETCURSOR: return LOWORD(lParam) == HTCLIENT ? OnSetCursor() : std::nullopt;
        case WM_RBUTTONDOWN: OnRightDown({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}); return 0;
        case WM_VSCROLL: ScrollVertically(PositionFor(m_vertical, LOWORD(wParam))); return 0;
        case WM_HSCROLL: ScrollHorizontally(PositionFor(m_horizontal, LOWORD(wParam))); return 0;
        case WM_GETTEXTLENGTH: return static_cast<LRESULT>(WindowText().size());
        case WM_GETTEXT: {
            const std::string text = WindowText();
            if (wParam == 0) return 0;
            m_query.reset();
            const std::size_t size = std::min<std::size_t>(text.size(), wParam - 1);
            auto* buffer = reinterpret_cast<char*>(lParam);
            std::memcpy(buffer, text.data(), size);
            buffer[size] = '\0';
            return static_cast<LRESULT>(size);
        }
        default: return OnTreeMessage(message, wParam, lParam);
    }
}

std::string CTree::WindowText() const {
    if (m_query) return *m_query;
    if (m_rowCount == 0) return m_setup.emptyText;
    return m_source.Has(FocusedRow()) ? RowText(FocusedRow()) : std::string();
}

std::optional<LRESULT> CTree::OnTreeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto number = static_cast<int>(wParam);
    const bool isColumn = number >= 0 && number < m_layout.Count();
    switch (message) {
        case kTreeGetRowCount: return m_rowCount;
        case kTreeGetColumnCount: return m_layout.Count();
        case kTreeGetFirstVisibleRow: return FirstVisibleRow();
        case kTreeGetVisibleRowCount: return PageRows();
        case kTreeGetFocusedRow: return FocusedRow();
        case kTreeGetSelectedCount: return static_cast<LRESULT>(SelectedRows().Count());
        case kTreeGetColumnWidth: return isColumn ? m_layout.Width(number) : -1;
        case kTreeClickHeader:
            if (!isColumn) return -1;
            if (events.headerClicked) events.headerClicked(number);
            return 1;
        case kTreeSelectRow:
            if (number != -1 && !m_source.Has(number)) return -1;
            EnsureVisible(number);
            ChangeSelection([=](RowSelection& selection) { return selection.SelectOnly(number); });
            return 1;
        case kTreeQueryCell: return QueryCell({number, static_cast<int>(lParam)});
        default: return OnRowMessage(message, number, lParam);
    }
}

std::optional<LRESULT> CTree::OnRowMessage(UINT message, int row, LPARAM lParam) {
    if (message < kTreeFirstMessage || message > kTreeLastMessage) return std::nullopt;
    if (row >= m_rowCount || !m_source.Has(row)) return -1;
    const TreeRow state = m_source.Row(row);
    switch (message) {
        case kTreeFocusRow:
            ChangeSelection([=](RowSelection& selection) { return selection.FocusOnly(row); });
            return 1;
        case kTreeIsRowSelected: return m_selection.IsSelected(row) ? 1 : 0;
        case kTreeEnsureVisible: EnsureVisible(row); return 1;
        case kTreeGetExpanded: return state.hasChildren ? static_cast<LRESULT>(state.isExpanded) : -1;
        case kTreeSetExpanded:
            if (!state.hasChildren) return -1;
            ExpandByUser(row, lParam != 0);
            return 1;
        case kTreeGetLevel: return state.level;
        default: return OnCellMessage(message, {row, static_cast<int>(lParam)});
    }
}

std::optional<LRESULT> CTree::OnCellMessage(UINT message, CellId cell) {
    if (cell.column < 0 || cell.column >= m_layout.Count()) return -1;
    const RECT seen = CellRect(cell.row, cell.column);
    const std::optional<bool> checked = m_source.Cell(cell.row, cell.column).checked;
    switch (message) {
        case kTreeGetCellLeftTop: return ::IsRectEmpty(&seen) ? -1 : Packed(seen.left, seen.top);
        case kTreeGetCellRightBottom: return ::IsRectEmpty(&seen) ? -1 : Packed(seen.right, seen.bottom);
        case kTreeGetCheckPosition: {
            const RECT check = PartsOf(cell).check;
            const POINT middle{(check.left + check.right) / 2, (check.top + check.bottom) / 2};
            return ::PtInRect(&seen, middle) ? Packed(middle.x, middle.y) : -1;
        }
        case kTreeGetCheck: return checked ? static_cast<LRESULT>(*checked) : -1;
        case kTreeToggleCheck:
            if (!checked) return -1;
            ToggleCheck(cell);
            return 1;
        default: return std::nullopt;
    }
}

LRESULT CTree::QueryCell(CellId cell) {
    m_query.reset();
    if (!m_source.Has(cell.row) || cell.column < -1 || cell.column >= m_layout.Count()) return -1;
    m_query = cell.column == -1 ? RowText(cell.row) : m_source.Cell(cell.row, cell.column).text;
    return static_cast<LRESULT>(m_query->size());
}

}  // namespace brennvar
