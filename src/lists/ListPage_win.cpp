#include "lists/ListPage_win.h"

#include <algorithm>
#include <utility>

#include "config/ResourceIds.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kWakeTimer = 1;

// At 96 pixels per inch.
constexpr int kSearchWidth = 208;
constexpr int kSearchHeight = 24;
constexpr int kSearchMargin = 16;
constexpr int kSearchGap = 8;  // to the list
constexpr int kCountHeight = 24;

constexpr WPARAM kLongestSearch = 200;  // characters

}  // namespace

ListPage::ListPage(const ListPageContext& context, PageTexts texts, std::unique_ptr<ListModel> model)
    : CPage(context.fonts, std::move(texts)), m_context(context), m_model(std::move(model)) {}

void ListPage::OnCreateContent() {
    const Language& language = m_context.language;
    const Look& look = GetLook();
    m_postTarget = Window();
    m_search.Create(Window(), "", ES_AUTOHSCROLL, IDC_PAGE_SEARCH, look);
    m_search.SetCue(language.GetText(1046, "Search"));
    ::SendMessageA(m_search.Window(), EM_LIMITTEXT, kLongestSearch, 0);
    CreateList();
    constexpr DWORD kOneLine = SS_LEFT | SS_NOPREFIX | SS_CENTERIMAGE;
    m_count.Create(Window(), "", LabelKind::Quiet, kOneLine, IDC_PAGE_COUNT, look);
    m_actions.Create(Window(), look, language, m_model->Actions());
    TreeEvents& events = m_list->events;
    events.headerClicked = [this](int column) { SortBy(column); };
    events.contextMenu = [this](int, POINT point) { ShowMenu(point); };
    events.widthsChanged = [this] {
        m_hasUserWidths = true;
        WriteWidths();
    };
    events.refreshWanted = [this] { Reload(); };
    events.findWanted = [this] { OnFind(); };
    events.selectionChanged = [this] { OnSelectionChanged(); };
    events.cellClicked = [this](int row, int column) { return ClickCell(row, column); };
    if (m_actions.FindByKey(ListKey::Enter)) events.opened = [this](int) { (void)PressKey(ListKey::Enter); };
    m_list->keyPressed = [this](ListKey key) { return PressKey(key); };
    m_model->ShowIn(*this);
    ShowEmptyText();
    OnSelectionChanged();
}

void ListPage::OnDestroy() {
    m_postTarget = nullptr;
    CPage::OnDestroy();
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
    const RECT footer{place.left, bottom - std::max(Scale(kCountHeight), m_actions.Height()), place.right, bottom};
    m_list->Place({place.left, place.top, place.right, footer.top});
    m_count.Place({place.left, bottom - Scale(kCountHeight), place.right, bottom});
    m_actions.Place(footer);
}

void ListPage::OnHide() {
    ++m_detailsAsked;
    m_list->HideBalloon();
    m_model->OnHidden();
}

void ListPage::OnRulesChanged() {
    // A hidden page reads them when it is opened.
    if (IsShown()) m_model->Read(ReadReason::RulesChanged);
}

void ListPage::WakeIn(std::chrono::milliseconds time) {
    ::SetTimer(Window(), kWakeTimer, static_cast<UINT>(time.count()), nullptr);
}

void ListPage::OnTimer(UINT_PTR id) {
    if (id != kWakeTimer) return;
    ::KillTimer(Window(), kWakeTimer);
    m_model->OnWake();
}

std::optional<LRESULT> ListPage::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kMessageProgramRead) return CPage::OnMessage(message, wParam, lParam);
    if (m_programs) m_programs->RunCompletions();
    return 0;
}

void ListPage::OnCommand(int id, int notification) {
    if (id == IDC_PAGE_SEARCH && notification == EN_CHANGE) {
        m_order.searched = m_search.Text();
        Rearrange();
    } else if (notification == BN_CLICKED) {
        if (const ListAction* const action = m_actions.Find(id)) DoAction(*action);
    }
}

void ListPage::OnFind() {
    ::SetFocus(m_search.Window());
    ::SendMessageA(m_search.Window(), EM_SETSEL, 0, -1);
}

TreeCell ListPage::Cell(int row, int column) const {
    const int sourceRow = SourceRowOf(row);
    ListCell cell = m_model->Cell(sourceRow, column);
    TreeCell shown;
    shown.text = std::move(cell.text);
    shown.tone = cell.tone;
    shown.checked = cell.checked;
    // Rows out of sight are asked for their texts only.
    if (column == 0 && IsInSight(row)) {
        if (const auto program = m_model->Program(sourceRow)) shown.icon = Programs().Icon(*program);
    }
    return shown;
}

bool ListPage::IsInSight(int row) const {
    const RECT seen = m_list->CellRect(row, 0);
    return !::IsRectEmpty(&seen);
}

int ListPage::FocusedRow() const {
    const int row = m_list->FocusedRow();
    return row < RowCount() ? row : -1;
}

std::vector<int> ListPage::SelectedSourceRows() const {
    std::vector<int> rows;
    for (const RowRanges::Range& range : m_list->SelectedRows().Ranges()) {
        for (int row = range.first; row <= range.last && row < RowCount(); ++row) rows.push_back(SourceRowOf(row));
    }
    return rows;
}

void ListPage::OnSelectionChanged() const {
    m_actions.Enable(State(), m_list->Window());
}

void ListPage::BeforeChange() {
    m_selectedBefore.clear();
    for (const int row : SelectedSourceRows()) m_selectedBefore.insert(m_model->Key(row));
    m_focusedBefore.reset();
    if (const int focused = FocusedRow(); focused >= 0) m_focusedBefore = m_model->Key(SourceRowOf(focused));
}

void ListPage::AfterChange(Change change) {
    m_arranger.Forget();
    if (change == Change::Looks) {
        m_list->Refresh();
        return;
    }
    Arrange();
    RowRanges rows;
    int focused = -1;
    for (int row = 0; row < RowCount() && (!m_selectedBefore.empty() || m_focusedBefore); ++row) {
        const std::string key = m_model->Key(SourceRowOf(row));
        if (m_selectedBefore.contains(key)) rows.Add(row, row);
        if (focused < 0 && key == m_focusedBefore) focused = row;
    }
    m_list->SetSelection(std::move(rows), focused);
    OnSelectionChanged();
    if (!m_hasUserWidths) m_list->FitToContent();
}

void ListPage::Rearrange() {
    std::vector<bool> selected(static_cast<std::size_t>(m_model->RowCount()));
    for (const int row : SelectedSourceRows()) selected[static_cast<std::size_t>(row)] = true;
    const bool hasSelection = State().hasSelection;
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
}

void ListPage::Arrange() {
    m_shown = m_arranger.Arrange(*m_model, static_cast<int>(m_columns.size()), m_order);
    ShowEmptyText();
    m_list->Refresh();
    const int count = m_model->RowCount();
    std::string shown = m_context.language.GetText(1048, "Entries:") + " " + std::to_string(m_shown.size());
    if (RowCount() != count) shown += " / " + std::to_string(count);
    m_count.SetText(shown);
}

void ListPage::ShowEmptyText() {
    const bool isSearched = !m_order.searched.empty() && m_model->RowCount() > 0;
    m_list->SetEmptyText(
        isSearched ? m_context.language.GetText(1047, "Nothing here holds the text that you are looking for.")
                   : m_model->EmptyText());
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
