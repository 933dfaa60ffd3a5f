#include "views/ListPage_win.h"

#include <algorithm>
#include <stdexcept>
#include <unordered_set>
#include <utility>

#include "config/ResourceIds.h"
#include "tree/ListMenu_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// At 96 pixels per inch.
constexpr int kSearchWidth = 208;
constexpr int kSearchHeight = 24;
constexpr int kSearchMargin = 16;
constexpr int kSearchGap = 8;  // to the list
constexpr int kCountHeight = 24;

constexpr WPARAM kLongestSearch = 200;  // characters

// Widths that nobody can have wanted.
constexpr std::uint32_t kWidestColumn = 4000;

}  // namespace

ListPage::ListPage(const ListPageContext& context, PageTexts texts, std::string widthsName)
    : CPage(context.fonts, std::move(texts)), m_context(context), m_widthsName(std::move(widthsName)) {}

void ListPage::OnCreateContent() {
    const Language& language = GetLanguage();
    const Look& look = GetLook();
    Content content = DescribeList();
    m_columns = std::move(content.columns);
    m_emptyText = std::move(content.emptyText);
    m_search.Create(Window(), "", ES_AUTOHSCROLL, IDC_PAGE_SEARCH, look);
    m_search.SetCue(language.GetText(1046, "Search"));
    ::SendMessageA(m_search.Window(), EM_LIMITTEXT, kLongestSearch, 0);
    const TreeSetup setup{.parent = Window(), .id = IDC_PAGE_LIST, .selectsMany = true, .emptyText = m_emptyText};
    m_list = MakeTree();
    if (!m_list->Create(setup, look, m_columns, *this)) throw std::runtime_error("no list");
    ReadWidths();
    m_list->events.headerClicked = [this](int column) { SortBy(column); };
    m_list->events.contextMenu = [this](int, POINT point) { ShowMenu(point); };
    m_list->events.widthsChanged = [this] { WriteWidths(); };
    m_list->events.refreshWanted = [this] { Reload(); };
    m_list->events.findWanted = [this] { OnFind(); };
    m_list->events.selectionChanged = [this] { OnSelectionChanged(); };
    constexpr DWORD kOneLine = SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE;
    m_count.Create(Window(), "", LabelKind::Quiet, kOneLine, IDC_PAGE_COUNT, look);
    OnListCreated();
}

int ListPage::FooterHeight() const {
    return Scale(kCountHeight);
}

int ListPage::RoomBesideTitle() const {
    return Scale(kSearchWidth + kSearchMargin);
}

void ListPage::OnPlaceContent(const RECT& place) {
    // On the page's title, which leaves the right side free.
    const LONG searchBottom = place.top - Scale(kSearchGap);
    m_search.Place(
        {place.right - Scale(kSearchWidth), searchBottom - Scale(kSearchHeight), place.right, searchBottom});
    // It reaches into the page's margin.
    const LONG bottom = place.bottom + Scale(kSearchGap);
    const RECT footer{place.left, bottom - FooterHeight(), place.right, bottom};
    m_list->Place({place.left, place.top, place.right, footer.top});
    m_count.Place({place.left, bottom - Scale(kCountHeight), place.right, bottom});
    OnPlaceFooter(footer);
}

TreeCell ListPage::Cell(int row, int column) const {
    TreeCell cell = SourceCell(SourceRowOf(row), column);
    // Rows out of sight are asked for their texts only.
    if (column == 0 && IsInSight(row)) cell.icon = SourceIcon(SourceRowOf(row));
    return cell;
}

bool ListPage::IsInSight(int row) const {
    const RECT seen = m_list->CellRect(row, 0);
    return !::IsRectEmpty(&seen);
}

std::vector<int> ListPage::SelectedSourceRows() const {
    std::vector<int> rows;
    for (const RowRanges::Range& range : m_list->SelectedRows().Ranges()) {
        for (int row = range.first; row <= range.last && row < RowCount(); ++row) rows.push_back(SourceRowOf(row));
    }
    return rows;
}

void ListPage::ChangeRows(const std::function<void()>& change) {
    ChangeRowsIfOther([&] {
        change();
        return true;
    });
}

void ListPage::ChangeRowsIfOther(const std::function<bool()>& change) {
    std::unordered_set<std::string> selected;
    for (const int row : SelectedSourceRows()) selected.insert(SourceKey(row));
    const int focused = m_list->FocusedRow();
    const bool hasFocus = focused >= 0 && focused < RowCount();
    const std::string focusedKey = hasFocus ? SourceKey(SourceRowOf(focused)) : "";
    const bool isOther = change();
    if (!isOther) {
        RowTextsChanged();
        return;
    }
    m_arranger.Forget();
    Arrange();
    RowRanges rows;
    int newFocused = -1;
    for (int row = 0; row < RowCount() && (!selected.empty() || hasFocus); ++row) {
        const std::string key = SourceKey(SourceRowOf(row));
        if (selected.contains(key)) rows.Add(row, row);
        if (hasFocus && newFocused < 0 && key == focusedKey) newFocused = row;
    }
    m_list->SetSelection(std::move(rows), newFocused);
    OnSelectionChanged();
}

void ListPage::RowTextsChanged() {
    m_arranger.Forget();
    m_list->Refresh();
}

void ListPage::Rearrange() {
    std::vector<bool> selected(static_cast<std::size_t>(SourceRowCount()));
    for (const int row : SelectedSourceRows()) selected[static_cast<std::size_t>(row)] = true;
    const bool hasSelection = !m_list->SelectedRows().IsEmpty();
    const int focused = m_list->FocusedRow();
    const int focusedSource = focused >= 0 && focused < RowCount() ? SourceRowOf(focused) : -1;
    Arrange();
    RowRanges rows;
    int newFocused = -1;
    for (int row = 0; row < RowCount() && (hasSelection || focusedSource >= 0); ++row) {
        if (selected[static_cast<std::size_t>(SourceRowOf(row))]) rows.Add(row, row);
        if (SourceRowOf(row) == focusedSource) newFocused = row;
    }
    m_list->SetSelection(std::move(rows), newFocused);
    OnSelectionChanged();
}

void ListPage::SetEmptyText(const std::string& text) {
    m_emptyText = text;
    if (m_order.searched.empty()) m_list->SetEmptyText(text);
}

void ListPage::Arrange() {
    const int count = SourceRowCount();
    m_shown = m_arranger.Arrange(
        count, static_cast<int>(m_columns.size()), [this](int row, int column) { return SourceText(row, column); },
        m_order);
    const Language& language = GetLanguage();
    m_list->SetEmptyText(m_order.searched.empty() || count == 0
                             ? m_emptyText
                             : language.GetText(1047, "Nothing here holds the text that you are looking for."));
    m_list->Refresh();
    std::string shown = language.GetText(1048, "Entries:") + " " + std::to_string(m_shown.size());
    if (RowCount() != count) shown += " / " + std::to_string(count);
    m_count.SetText(shown);
}

void ListPage::SortBy(int column) {
    // Upwards, downwards, and then as it was read.
    if (m_order.column != column) {
        m_order.column = column;
        m_order.isAscending = true;
    } else if (m_order.isAscending) {
        m_order.isAscending = false;
    } else {
        m_order.column = RowOrder::kAsRead;
        m_order.isAscending = true;
    }
    m_order.isNumber =
        m_order.column != RowOrder::kAsRead && m_columns[static_cast<std::size_t>(m_order.column)].isNumber;
    m_list->SetSortMark(m_order.column, m_order.isAscending);
    Rearrange();
}

void ListPage::OnCommand(int id, int notification) {
    if (id != IDC_PAGE_SEARCH) {
        if (notification == BN_CLICKED) OnPageCommand(id);
        return;
    }
    if (notification != EN_CHANGE) return;
    m_order.searched = m_search.Text();
    Rearrange();
}

void ListPage::OnFind() {
    ::SetFocus(m_search.Window());
    ::SendMessageA(m_search.Window(), EM_SETSEL, 0, -1);
}

void ListPage::ShowMenu(POINT point) {
    CPopupMenu menu;
    AddMenuItems(menu);
    const bool hasSelection = !m_list->SelectedRows().IsEmpty();
    const int command = TrackListMenu(Window(), point, GetLook(), GetLanguage(), hasSelection, std::move(menu));
    switch (static_cast<ListCommand>(command)) {
        case ListCommand::Copy: m_list->CopySelection(); break;
        case ListCommand::SelectAll: {
            RowRanges all;
            all.Add(0, RowCount() - 1);
            m_list->SetSelection(std::move(all), m_list->FocusedRow());
            OnSelectionChanged();
            break;
        }
        case ListCommand::Refresh: Reload(); break;
        case ListCommand::None: break;
        default: OnPageCommand(command); break;
    }
}

std::string ListPage::WidthName(std::size_t column) const {
    return m_widthsName + "Column" + std::to_string(column);
}

void ListPage::ReadWidths() {
    std::vector<int> widths;
    for (std::size_t column = 0; column < m_columns.size(); ++column) {
        std::uint32_t width = 0;
        if (!m_context.userValues.ReadUserValue(WidthName(column), width)) return;
        widths.push_back(static_cast<int>(std::min(width, kWidestColumn)));
    }
    m_list->SetColumnWidths(widths);
}

void ListPage::WriteWidths() const {
    const std::vector<int> widths = m_list->ColumnWidths();
    for (std::size_t column = 0; column < widths.size(); ++column) {
        m_context.userValues.WriteUserValue(WidthName(column), static_cast<std::uint32_t>(widths[column]));
    }
}

}  // namespace brennvar
