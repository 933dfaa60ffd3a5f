// Which rows a list page shows, in which order, and what of them is selected after they have changed.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "config/Amounts.h"
#include "lists/ListPage_win.h"

namespace brennvar {
namespace {

// Of more selected rows than anybody has picked one by one, the keys are not made.
constexpr int kMostKeptRows = 1000;

}  // namespace

void ListPage::BeforeChange() {
    m_selectedBefore = m_awaited.selected;
    m_focusedBefore = m_awaited.focused;
    m_wasFocusSeen = m_awaited.isFocusSeen;
    m_firstBefore = m_awaited.first;
    const auto keyOf = [this](int row) { return m_model->Key(SourceRowOf(row)); };
    const auto count = m_list->SelectedRows().Count();
    m_wasAllSelected = count > 1 && count == RowCount();
    if (!m_wasAllSelected && count <= kMostKeptRows) {
        for (const int row : SelectedSourceRows()) m_selectedBefore.insert(m_model->Key(row));
    }
    if (const int focused = FocusedRow(); focused >= 0) {
        m_focusedBefore = keyOf(focused);
        m_wasFocusSeen = IsInSight(focused);
    }
    const int first = m_list->FirstVisibleRow();
    if (m_arrangesItself && first > 0 && first < RowCount()) m_firstBefore = keyOf(first);
}

void ListPage::AfterChange(Change change) {
    m_arranger.Forget();
    SummaryChanged();
    if (change == Change::Looks) {
        m_list->RefreshLooks();
        OnSelectionChanged();  // what can be done with a row may depend on what it says
        return;
    }
    if (change == Change::Behind && m_arrangesItself) {
        m_list->Refresh();
        SelectAwaited();
        ShowCount();
        OnSelectionChanged();
        return;
    }
    m_list->SetHasLevels(m_model->RowCount() > 0 && m_model->Shape(0).hasChildren);
    Arrange();
    RestoreSelection();
    OnSelectionChanged();
    if (!m_hasUserWidths) m_list->FitToContent();
    FindWantedRow();
    // What is not there when the list has been read has no row: it must not take the keyboard some day.
    m_wantedRow.clear();
}

void ListPage::RestoreSelection() {
    RowRanges rows;
    int focused = -1;
    if (m_wasAllSelected) rows.Add(0, RowCount() - 1);
    if (m_arrangesItself) {
        m_list->SetSelection(std::move(rows), focused);
        // In another order, what has the focus stays in sight, and not the place.
        const bool isNewOrder = std::exchange(m_hasNewOrder, false) || m_awaited.isFocusSeen;
        m_awaited = {.selected = m_selectedBefore,
                     .focused = m_focusedBefore,
                     .isFocusSeen = isNewOrder && m_wasFocusSeen,
                     .first = isNewOrder ? std::nullopt : m_firstBefore};
        return SelectAwaited();
    }
    for (int row = 0; row < RowCount() && (!m_selectedBefore.empty() || m_focusedBefore); ++row) {
        const std::string key = m_model->Key(SourceRowOf(row));
        if (m_selectedBefore.contains(key)) rows.Add(row, row);
        if (focused < 0 && key == m_focusedBefore) focused = row;
    }
    m_list->SetSelection(std::move(rows), focused);
}

void ListPage::SelectAwaited() {
    if (m_awaited.selected.empty() && !m_awaited.focused && !m_awaited.first) return;
    RowRanges rows = m_list->SelectedRows();
    std::erase_if(m_awaited.selected, [&](const std::string& key) {
        const int row = m_model->FindRow(key);
        if (row >= 0) rows.Add(row, row);
        return row >= 0;
    });
    int focused = m_list->FocusedRow();
    const int awaited = m_awaited.focused ? m_model->FindRow(*m_awaited.focused) : -1;
    if (awaited >= 0) {
        focused = awaited;
        m_awaited.focused.reset();
    }
    m_list->SetSelection(std::move(rows), focused);
    if (const int first = m_awaited.first ? m_model->FindRow(*m_awaited.first) : -1; first >= 0) {
        m_list->ScrollTo(first);
        // Further than what has come so far lets it, when more comes.
        if (m_list->FirstVisibleRow() == first) m_awaited.first.reset();
    } else if (awaited >= 0 && std::exchange(m_awaited.isFocusSeen, false)) {
        m_list->EnsureVisible(awaited);
    }
}

void ListPage::OrderKept(const RowOrder& order) {
    m_order = order;
    m_list->SetSortMark(m_order.column, m_order.isAscending);
    if (m_search.Text() != m_order.searched) m_search.SetText(m_order.searched);  // EN_CHANGE: wished once more
    m_hasNewOrder = false;
}

void ListPage::RowsCameFirst(int count) {
    const bool followsFirst = m_list->FirstVisibleRow() == 0;
    SummaryChanged();
    m_list->MoveRowsBehind(-1, count);
    m_list->Refresh();
    if (followsFirst) m_list->ScrollTo(0);
    ShowCount();
    OnSelectionChanged();
}

void ListPage::ShowRow(const std::string& key) {
    m_wantedRow = key;
    if (!m_order.searched.empty()) m_search.SetText("");  // EN_CHANGE shows all rows
    FindWantedRow();
}

void ListPage::FindWantedRow() {
    if (m_wantedRow.empty()) return;
    // By the model, which may know other spellings of the key.
    const int wanted = m_model->FindRow(m_wantedRow);
    for (int row = 0; wanted >= 0 && row < RowCount(); ++row) {
        if (SourceRowOf(row) != wanted) continue;
        m_wantedRow.clear();
        m_list->SelectRow(row);
        m_list->EnsureVisible(row);
        ::SetFocus(m_list->Window());
        OnSelectionChanged();
        return;
    }
}

void ListPage::Rearrange() {
    m_model->OnOrder(m_order);
    if (m_arrangesItself) {
        m_hasNewOrder = true;
        m_model->ArrangeBy(m_order);
        ShowEmptyText();
        return;
    }
    std::vector<bool> selected(static_cast<std::size_t>(m_model->RowCount()));
    for (const int row : SelectedSourceRows()) selected[static_cast<std::size_t>(row)] = true;
    const bool hasSelection = HasSelection();
    const int focusedSource = FocusedRow() >= 0 ? SourceRowOf(FocusedRow()) : -1;
    Arrange();
    RowRanges rows;
    int focused = -1;
    for (int row = 0; row < RowCount() && (hasSelection || focusedSource >= 0); ++row) {
        if (selected[static_cast<std::size_t>(SourceRowOf(row))]) rows.Add(row, row);
        if (SourceRowOf(row) == focusedSource) focused = row;
    }
    m_list->SetSelection(std::move(rows), focused);
    OnSelectionChanged();
    SummaryChanged();
}

void ListPage::Arrange() {
    if (!m_arrangesItself) m_shown = m_arranger.Arrange(*m_model, static_cast<int>(m_columns.size()), m_order);
    ShowEmptyText();
    m_list->Refresh();
    ShowCount();
}

void ListPage::ShowCount() {
    const int count = m_model->AllRowCount();
    const Language& language = m_context.language;
    const auto number = [](int value) { return FormatCount(static_cast<std::uint64_t>(value)); };
    std::string shown = language.GetText(1048, "Entries:") + " " + number(RowCount());
    if (RowCount() != count) shown += " " + language.GetText(2480, "of") + " " + number(count);
    m_count.SetText(shown);
}

void ListPage::ShowEmptyText() {
    const Language& language = m_context.language;
    const bool isSearched = !m_order.searched.empty() && m_model->AllRowCount() > 0 && !m_model->Progress();
    const std::string noHit = language.GetText(1047, "No entry contains this text.");
    EmptyNote note{.text = isSearched ? noHit : m_model->EmptyText()};
    // Some models find out themselves that nothing was found.
    if (isSearched || (!m_order.searched.empty() && note.text == noHit)) {
        note.picture = EmptyPicture::Magnifier;
        note.action = language.GetText(2502, "Clear the search");
    }
    m_list->SetEmpty(note);
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

}  // namespace brennvar
