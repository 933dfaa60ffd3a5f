#include "tree/TreeAutomation_win.h"

#include <algorithm>
#include <cstring>

#include "tree/TreeMessages_win.h"
#include "tree/TreeText_win.h"

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

std::optional<LRESULT> TreeAutomation::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_VSCROLL: Scroll(m_places.Vertical(), LOWORD(wParam)); return 0;
        case WM_HSCROLL: Scroll(m_places.Horizontal(), LOWORD(wParam)); return 0;
        case WM_GETTEXTLENGTH: return static_cast<LRESULT>(WindowText().size());
        case WM_GETTEXT: return CopyWindowText(reinterpret_cast<char*>(lParam), wParam);
        default: return OnTreeMessage(message, wParam, lParam);
    }
}

void TreeAutomation::Scroll(CScrollBar& bar, WORD request) {
    m_state.Scroll(bar, PositionFor(bar, request));
}

LRESULT TreeAutomation::CopyWindowText(char* buffer, std::size_t size) {
    const std::string text = WindowText();
    if (size == 0) return 0;
    m_query.reset();
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<LRESULT>(length);
}

std::string TreeAutomation::WindowText() const {
    if (m_query) return *m_query;
    if (m_places.RowCount() == 0) return m_state.Setup().empty.text;
    const int row = m_state.FocusedRow();
    return m_state.Source().Has(row) ? TextOfRow(m_state, row) : std::string();
}

std::optional<LRESULT> TreeAutomation::OnTreeMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto number = static_cast<int>(wParam);
    const bool isColumn = number >= 0 && number < m_places.Columns().Count();
    switch (message) {
        case kTreeGetRowCount: return m_places.RowCount();
        case kTreeGetColumnCount: return m_places.Columns().Count();
        case kTreeGetFirstVisibleRow: return m_places.FirstRow();
        case kTreeGetVisibleRowCount: return m_places.PageRows();
        case kTreeGetFocusedRow: return m_state.FocusedRow();
        case kTreeGetSelectedCount: return static_cast<LRESULT>(m_state.Selection().Rows().Count());
        case kTreeGetColumnWidth: return isColumn ? m_places.Columns().Width(number) : -1;
        case kTreeClickHeader:
            if (!isColumn) return -1;
            if (m_state.events.headerClicked) m_state.events.headerClicked(number);
            return 1;
        case kTreeSelectRow:
            if (number != -1 && !m_state.Source().Has(number)) return -1;
            m_state.EnsureVisible(number);
            m_state.ChangeSelection([=](RowSelection& selection) { return selection.SelectOnly(number); });
            return 1;
        case kTreeQueryCell: return QueryCell({number, static_cast<int>(lParam)});
        default: return OnRowMessage(message, number, lParam);
    }
}

std::optional<LRESULT> TreeAutomation::OnRowMessage(UINT message, int row, LPARAM lParam) {
    if (message < kTreeFirstMessage || message > kTreeLastMessage) return std::nullopt;
    if (row >= m_places.RowCount() || !m_state.Source().Has(row)) return -1;
    const TreeRow state = m_state.Source().Row(row);
    switch (message) {
        case kTreeFocusRow:
            m_state.ChangeSelection([=](RowSelection& selection) { return selection.FocusOnly(row); });
            return 1;
        case kTreeIsRowSelected: return m_state.Selection().IsSelected(row) ? 1 : 0;
        case kTreeEnsureVisible: m_state.EnsureVisible(row); return 1;
        case kTreeGetExpanded: return state.hasChildren ? static_cast<LRESULT>(state.isExpanded) : -1;
        case kTreeSetExpanded:
            if (!state.hasChildren) return -1;
            m_state.ExpandByUser(row, lParam != 0);
            return 1;
        case kTreeGetLevel: return state.level;
        default: return OnCellMessage(message, {row, static_cast<int>(lParam)});
    }
}

std::optional<LRESULT> TreeAutomation::OnCellMessage(UINT message, CellId cell) {
    if (cell.column < 0 || cell.column >= m_places.Columns().Count()) return -1;
    const RECT seen = m_places.SeenCell(cell);
    const std::optional<bool> checked = m_state.Source().Cell(cell.row, cell.column).checked;
    switch (message) {
        case kTreeGetCellLeftTop: return ::IsRectEmpty(&seen) ? -1 : Packed(seen.left, seen.top);
        case kTreeGetCellRightBottom: return ::IsRectEmpty(&seen) ? -1 : Packed(seen.right, seen.bottom);
        case kTreeGetCheckPosition: {
            const RECT check = m_places.PartsOf(cell).check;
            const POINT middle{(check.left + check.right) / 2, (check.top + check.bottom) / 2};
            return ::PtInRect(&seen, middle) ? Packed(middle.x, middle.y) : -1;
        }
        case kTreeGetCheck: return checked ? static_cast<LRESULT>(*checked) : -1;
        case kTreeToggleCheck:
            if (!checked) return -1;
            m_state.ToggleCheck(cell);
            return 1;
        default: return std::nullopt;
    }
}

LRESULT TreeAutomation::QueryCell(CellId cell) {
    m_query.reset();
    if (!m_state.Source().Has(cell.row) || cell.column < -1 || cell.column >= m_places.Columns().Count()) return -1;
    m_query = cell.column == -1 ? TextOfRow(m_state, cell.row) : m_state.Source().Cell(cell.row, cell.column).text;
    return static_cast<LRESULT>(m_query->size());
}

}  // namespace brennvar
