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
constexpr int kSearchAbove = 56;  // the content: as the title begins
constexpr int kBelow = 8;         // the content reaches into the margin
constexpr int kCountHeight = 24;

constexpr WPARAM kLongestSearch = 200;  // characters

}  // namespace

ListPage::ListPage(const ListPageContext& context, PageTexts texts, std::unique_ptr<ListModel> model)
    : CPage(context.fonts, std::move(texts)),
      m_context(context),
      m_model(std::move(model)),
      m_arrangesItself(m_model->ArrangesItself()) {}

void ListPage::OnCreateContent() {
    const Language& language = m_context.language;
    const Look& look = GetLook();
    m_postTarget = Window();
    m_search.Create(Window(), "", ES_AUTOHSCROLL, IDC_PAGE_SEARCH, look);
    m_search.SetCue(language.GetText(1046, "Search"));
    ::SendMessageA(m_search.Window(), EM_LIMITTEXT, kLongestSearch, 0);
    m_choices.Create(Texts(), look, language, m_model->Choices());
    CreateList();
    m_count.Create(Texts(), "", LabelKind::Quiet, SS_LEFT | SS_CENTERIMAGE, IDC_PAGE_COUNT, look);
    m_actions.Create(Window(), look, language, m_model->Actions());
    TreeEvents& events = m_list->events;
    events.headerClicked = [this](int column) { SortBy(column); };
    events.contextMenu = [this](int, POINT point) { ShowMenu(point); };
    events.widthsChanged = [this] {
        m_hasUserWidths = true;
        WriteWidths();
    };
    events.refreshWanted = [this] { Reload(); };
    events.emptyAction = [this] { m_search.SetText(""); };  // EN_CHANGE shows all rows
    events.findWanted = [this] { OnFind(); };
    events.copyWanted = [this] { return CopyByModel(); };
    events.selectionChanged = [this] {
        m_awaited = {};
        OnSelectionChanged();
    };
    events.cellClicked = [this](int row, int column) { return ClickCell(row, column); };
    events.checkToggled = [this](int row, int column, bool) {
        DoForRow(m_columns[static_cast<std::size_t>(column)].checkAction, row);
    };
    events.canDragRows = [this] { return m_model->CanDragRows(); };
    events.rowsDragged = [this](int before) { DragRows(before); };
    if (m_actions.FindByKey(ListKey::Enter)) events.opened = [this](int) { (void)PressKey(ListKey::Enter); };
    m_list->keyPressed = [this](ListKey key) { return PressKey(key); };
    m_model->ShowIn(*this);
    SummaryChanged();
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
    // Beside the page's title, which leaves the right side free.
    const LONG searchTop = place.top - Scale(kSearchAbove);
    m_search.Place({place.right - Scale(kSearchWidth), searchTop, place.right, searchTop + Scale(kSearchHeight)});
    // It reaches into the page's margin.
    const LONG bottom = place.bottom + Scale(kBelow);
    const RECT footer{place.left,
                      bottom - std::max(Scale(kCountHeight), m_actions.Height(place.right - place.left)),
                      place.right, bottom};
    m_choices.Place({place.left, place.top, place.right, place.top + m_choices.Height()});
    m_list->Place({place.left, place.top + m_choices.Height(), place.right, footer.top});
    // Beside the buttons, not below them: a new count would paint over those that stay as they are.
    const LONG buttons = m_actions.Place(footer);
    m_count.Place({place.left, bottom - Scale(kCountHeight), std::max(place.left, buttons), bottom});
}

void ListPage::OnHide() {
    ++m_detailsAsked;
    m_wantedRow.clear();
    m_list->HideBalloon();
    m_model->OnHidden();
}

void ListPage::OnLogsDeleted() {
    if (IsShown()) m_model->Read(ReadReason::LogsDeleted);
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
    } else if (const auto chosen = m_choices.Chosen(id, notification)) {
        m_model->Choose(chosen->first, chosen->second);
    } else if (id == IDC_PAGE_STOP) {
        OnEscape();
    } else if (notification == BN_CLICKED) {
        if (const ListAction* const action = m_actions.Find(id)) DoAction(*action);
    }
}

void ListPage::OnFind() {
    ::SetFocus(m_search.Window());
    ::SendMessageA(m_search.Window(), EM_SETSEL, 0, -1);
}

void ListPage::ProgressChanged() {
    const auto progress = m_model->Progress();
    if (!progress) m_awaited = {};
    m_choices.ShowProgress(progress);
    OnSelectionChanged();  // some actions wait for the end
}

void ListPage::OnEscape() {
    if (m_model->Progress()) m_model->StopProgress();
}

bool ListPage::MayLeave() {
    const auto question = m_model->LeavingQuestion();
    if (!question) return true;
    if (!Confirm(*question)) return false;
    m_model->StopProgress();
    return true;
}

std::string ListPage::Tip(int row, int column) const {
    return m_model->CellTip(SourceRowOf(row), column);
}

TreeRow ListPage::Row(int row) const {
    const int sourceRow = SourceRowOf(row);
    const RowShape shape = m_model->Shape(sourceRow);
    return {.level = shape.level,
            .hasChildren = shape.hasChildren,
            .isExpanded = shape.isExpanded,
            .mark = m_model->Mark(sourceRow)};
}

TreeCell ListPage::Words(int row, int column) const {
    ListCell cell = m_model->Cell(SourceRowOf(row), column);
    TreeCell shown;
    shown.text = std::move(cell.text);
    shown.tone = cell.tone;
    shown.checked = cell.checked;
    shown.glyph = cell.glyph;
    return shown;
}

TreeCell ListPage::Cell(int row, int column) const {
    TreeCell shown = Words(row, column);
    // Rows out of sight are asked for their texts only.
    if (column == m_iconColumn && IsInSight(row)) {
        if (const auto program = m_model->Program(SourceRowOf(row))) shown.icon = Programs().Icon(*program);
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
    m_actions.Enable(*this, m_list->Window());
}

}  // namespace brennvar
