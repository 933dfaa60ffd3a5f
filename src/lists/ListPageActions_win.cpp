// What the user does with the rows of a list page: actions, menu, details.
#include "config/ResourceIds.h"
#include "dialogs/MessageDialog_win.h"
#include "lists/ListPage_win.h"
#include "tree/ListMenu_win.h"

namespace brennvar {
namespace {

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

}  // namespace

ListState ListPage::State() const {
    return {.hasSelection = !m_list->SelectedRows().IsEmpty(), .hasFocus = FocusedRow() >= 0};
}

void ListPage::ShowMenu(POINT point) {
    CPopupMenu menu;
    m_actions.AddTo(menu, m_context.language, State());
    const int command =
        TrackListMenu(Window(), point, GetLook(), m_context.language, State().hasSelection, std::move(menu));
    switch (static_cast<ListCommand>(command)) {
        case ListCommand::Copy: m_list->CopySelection(); break;
        case ListCommand::SelectAll: SelectAll(); break;
        case ListCommand::Refresh: Reload(); break;
        default:
            if (const ListAction* const action = m_actions.Find(command)) DoAction(*action);
            break;
    }
}

void ListPage::SelectAll() {
    RowRanges all;
    all.Add(0, RowCount() - 1);
    m_list->SetSelection(std::move(all), m_list->FocusedRow());
    OnSelectionChanged();
}

std::vector<int> ListPage::RowsOf(const ListAction& action) const {
    if (action.rows == ActionRows::Selected) return SelectedSourceRows();
    const int focused = action.rows == ActionRows::Focused ? FocusedRow() : -1;
    return focused < 0 ? std::vector<int>() : std::vector<int>{SourceRowOf(focused)};
}

void ListPage::DoAction(const ListAction& action) {
    if (action.showsDetails) return ShowDetails(FocusedRow());
    std::vector<int> rows = RowsOf(action);
    const bool isForRows = action.rows != ActionRows::None;
    if (isForRows && rows.empty()) return;
    if (const auto question = m_model->Question(action.id, rows.size())) {
        if (!Confirm(*question)) return;
        rows = RowsOf(action);  // the list may have been read again meanwhile
        if (isForRows && rows.empty()) return;
    }
    m_model->Do(action.id, rows);
}

bool ListPage::Confirm(const ListQuestion& question) const {
    const Language& language = m_context.language;
    return MessageDialog(GetLook().fonts, {.caption = language.GetText(41, "Brennvar Personal Firewall"),
                                           .message = question.text,
                                           .ok = question.yes,
                                           .cancel = language.GetText(1001, "Cancel"),
                                           .isCancelDefault = true})
        .Ask(::GetAncestor(Window(), GA_ROOT));
}

bool ListPage::ClickCell(int row, int column) {
    const ListAction* const action = m_actions.Find(m_columns[static_cast<std::size_t>(column)].clickAction);
    if (!action) return false;
    if (!action->showsDetails) {
        const int sourceRow = SourceRowOf(row);
        m_model->Do(action->id, {&sourceRow, 1});
        return true;
    }
    // While rows are being gathered a balloon would only be in the way.
    if (!IsHeld(VK_CONTROL) && !IsHeld(VK_SHIFT)) ShowDetails(row);
    return false;
}

bool ListPage::PressKey(ListKey key) {
    const ListAction* const action = m_actions.FindByKey(key);
    if (!action || (action->rows == ActionRows::Focused && FocusedRow() < 0)) return false;
    DoAction(*action);
    return true;
}

void ListPage::ShowDetails(int row) {
    if (row < 0 || row >= RowCount()) return;
    const int sourceRow = SourceRowOf(row);
    const RowDetails details = m_model->Details(sourceRow);
    const auto asked = ++m_detailsAsked;
    if (!details.program) {
        m_list->ShowBalloon(row, {.title = details.title, .text = details.text, .link = {}}, nullptr);
        return;
    }
    const auto show = [this, row, details, asked, key = m_model->Key(sourceRow)](const ProgramDetails& found) {
        // Only where the user still looks: the row may have gone, or the user to another one.
        if (asked != m_detailsAsked || row >= RowCount() || row != m_list->FocusedRow()) return;
        if (m_model->Key(SourceRowOf(row)) != key || ::GetFocus() != m_list->Window()) return;
        const std::string text = details.text + DescribeProgram(found, m_context.language);
        m_list->ShowBalloon(row, {.title = details.title, .text = text, .link = {}},
                            Programs().Icon(*details.program));
    };
    Programs().ReadDetails(*details.program, show);
}

ProgramReader& ListPage::Programs() const {
    if (!m_programs) {
        m_programs = std::make_unique<ProgramReader>([this] {
            if (const HWND target = m_postTarget) ::PostMessageA(target, kMessageProgramRead, 0, 0);
        });
        m_programs->onIcon = [this](const std::string& program) { RepaintRowsOf(program); };
    }
    return *m_programs;
}

void ListPage::RepaintRowsOf(const std::string& program) const {
    for (int row = m_list->FirstVisibleRow(); row < RowCount() && IsInSight(row); ++row) {
        if (m_model->Program(SourceRowOf(row)) == program) m_list->RefreshRow(row);
    }
}

}  // namespace brennvar
