#include "ui/ListView.h"

#include <algorithm>
#include <cstring>

#include "ui/Controls.h"
#include "ui/Fonts.h"

namespace brennvar {
namespace {

constexpr int kHeaderRoom = 56;       // from the top of the list to the text of an empty one
constexpr int kEmptyTextHeight = 40;  // two lines
constexpr int kMargin = 16;

}  // namespace

void CListView::Create(HWND parent, int listId, int emptyTextId, HFONT font, std::span<const ListColumn> columns,
                       const ListRows& rows) {
    m_rows = &rows;
    const HINSTANCE module = ::GetModuleHandleA(nullptr);
    const auto number = [](int id) { return reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)); };
    // Made first, so that it lies above the list.
    m_emptyText = ::CreateWindowExA(0, "STATIC", "", WS_CHILD | WS_CLIPSIBLINGS | SS_CENTER | SS_NOPREFIX, 0, 0, 0,
                                    0, parent, number(emptyTextId), module, nullptr);
    m_list = ::CreateWindowExA(WS_EX_CLIENTEDGE, WC_LISTVIEWA, "",
                               WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | LVS_REPORT | LVS_OWNERDATA |
                                   LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_NOSORTHEADER,
                               0, 0, 0, 0, parent, number(listId), module, nullptr);
    ListView_SetExtendedListViewStyle(m_list, LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER | LVS_EX_LABELTIP);
    SetControlFont(m_list, font);
    SetControlFont(m_emptyText, font);
    int index = 0;
    for (const ListColumn& column : columns) {
        std::string title = column.title;
        LVCOLUMNA header{};
        header.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_FMT;
        header.fmt = column.isNumber ? LVCFMT_RIGHT : LVCFMT_LEFT;
        header.cx = Scale(column.width);
        header.pszText = title.data();
        if (column.takesRoom) {
            m_wideColumn = index;
            m_wideColumnLeast = header.cx;
        } else {
            m_otherWidth += header.cx;
        }
        ::SendMessageA(m_list, LVM_INSERTCOLUMNA, static_cast<WPARAM>(index++), reinterpret_cast<LPARAM>(&header));
    }
    Refresh();
}

void CListView::Place(const RECT& place) {
    const int width = place.right - place.left;
    ::SetWindowPos(m_list, nullptr, place.left, place.top, width, place.bottom - place.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    ::SetWindowPos(m_emptyText, nullptr, place.left + Scale(kMargin), place.top + Scale(kHeaderRoom),
                   std::max(0, width - 2 * Scale(kMargin)), Scale(kEmptyTextHeight), SWP_NOZORDER | SWP_NOACTIVATE);
    FitWideColumn();
}

void CListView::FitWideColumn() {
    RECT client{};
    ::GetClientRect(m_list, &client);
    // Only when the room has changed: in between the user may have chosen another width.
    if (m_wideColumn < 0 || client.right == m_fittedWidth) return;
    m_fittedWidth = client.right;
    ListView_SetColumnWidth(m_list, m_wideColumn, std::max<int>(m_wideColumnLeast, client.right - m_otherWidth));
}

void CListView::Refresh() {
    const int count = m_rows->RowCount();
    if (SelectedRow() >= count) SelectRow(-1);
    ListView_SetItemCountEx(m_list, count, LVSICF_NOSCROLL | LVSICF_NOINVALIDATEALL);
    FitWideColumn();  // a scroll bar may have come or gone
    ::InvalidateRect(m_list, nullptr, FALSE);
    ::ShowWindow(m_emptyText, count == 0 ? SW_SHOWNA : SW_HIDE);
}

void CListView::SetEmptyText(const std::string& text) const {
    SetTextIfChanged(m_emptyText, text);
}

int CListView::SelectedRow() const {
    return ListView_GetNextItem(m_list, -1, LVNI_SELECTED);
}

void CListView::SelectRow(int row) const {
    if (row == SelectedRow()) return;
    constexpr UINT kBoth = LVIS_SELECTED | LVIS_FOCUSED;
    ListView_SetItemState(m_list, -1, 0, kBoth);
    if (row >= 0) ListView_SetItemState(m_list, row, kBoth, kBoth);
}

LRESULT CListView::OnNotify(NMHDR& header) const {
    if (header.hwndFrom != m_list || header.code != LVN_GETDISPINFOA) return 0;
    LVITEMA& item = reinterpret_cast<NMLVDISPINFOA&>(header).item;
    if (!(item.mask & LVIF_TEXT) || item.cchTextMax <= 0) return 0;
    // The list may still ask for a row that has just gone.
    const std::string text =
        item.iItem >= 0 && item.iItem < m_rows->RowCount() ? m_rows->CellText(item.iItem, item.iSubItem) : "";
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(item.cchTextMax) - 1);
    std::memcpy(item.pszText, text.data(), length);
    item.pszText[length] = '\0';
    return 0;
}

HBRUSH CListView::OnControlColor(HDC dc, HWND control) const {
    if (control != m_emptyText) return nullptr;
    ::SetTextColor(dc, ::GetSysColor(COLOR_WINDOWTEXT));
    ::SetBkColor(dc, ::GetSysColor(COLOR_WINDOW));
    return ::GetSysColorBrush(COLOR_WINDOW);
}

}  // namespace brennvar
