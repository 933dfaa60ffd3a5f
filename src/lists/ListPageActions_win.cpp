// What the user does with the rows of a list page: actions, menu, details.
#include "dialogs/DetailsDialog_win.h"
#include "dialogs/MessageDialog_win.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/SavePlaceDialog_win.h"
#include "lists/ListPage_win.h"
#include "tree/ListMenu_win.h"
#include "ui/Clipboard_win.h"

namespace brennvar {
namespace {

// So many selected rows are asked whether an action works for one of them.
constexpr int kMostAskedRows = 1000;

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

}  // namespace

bool ListPage::IsPossible(const ListAction& action) const {
    if (!NeedsRow(action)) return m_model->CanDo(action.id, -1);
    if (action.rows == ActionRows::Focused) {
        return FocusedRow() >= 0 && m_model->CanDo(action.id, SourceRowOf(FocusedRow()));
    }
    int asked = 0;
    for (const RowRanges::Range& range : m_list->SelectedRows().Ranges()) {
        for (int row = range.first; row <= range.last && row < RowCount(); ++row) {
            if (m_model->CanDo(action.id, SourceRowOf(row)) || ++asked == kMostAskedRows) return true;
        }
    }
    return false;
}

bool ListPage::CopyByModel() {
    return HasSelection() && m_model->Copy(m_list->SelectedRows());
}

void ListPage::ShowMenu(POINT point) {
    CPopupMenu menu;
    m_actions.AddTo(menu, m_context.language, *this);
    const int command =
        TrackListMenu(Window(), point, GetLook(), m_context.language, HasSelection(), std::move(menu));
    switch (static_cast<ListCommand>(command)) {
        case ListCommand::Copy:
            if (!CopyByModel()) m_list->CopySelection();
            break;
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
    std::vector<int> rows;
    if (action.rows == ActionRows::SelectedOrAll) return SelectedSourceRows();
    if (action.rows == ActionRows::Selected) {
        rows = SelectedSourceRows();
    } else if (action.rows != ActionRows::None && FocusedRow() >= 0) {
        rows.push_back(SourceRowOf(FocusedRow()));
    }
    std::erase_if(rows, [&](int row) { return !m_model->CanDo(action.id, row); });
    return rows;
}

void ListPage::DoAction(const ListAction& action) {
    if (!IsPossible(action)) return;
    if (action.showsDetails) return ShowDetails(FocusedRow(), DetailsFor::Action);
    std::vector<int> rows = RowsOf(action);
    const bool isForRows = NeedsRow(action);
    if (isForRows && rows.empty()) return;
    if (const auto question = m_model->Question(action.id, rows)) {
        std::unordered_set<std::string> asked;
        for (const int row : rows) asked.insert(m_model->Key(row));
        if (!Confirm(*question)) return;
        // The list may have been read again meanwhile: only what was asked about.
        rows = RowsOf(action);
        std::erase_if(rows, [&](int row) { return !asked.contains(m_model->Key(row)); });
        if (isForRows && rows.empty()) return;
    }
    DoStep([&] { m_model->Do(action.id, rows); });
}

void ListPage::DoStep(const std::function<void()>& step) {
    const int focused = FocusedRow();
    step();
    // It may have moved the row out of sight.
    if (FocusedRow() >= 0 && FocusedRow() != focused) m_list->EnsureVisible(FocusedRow());
}

void ListPage::DoForRow(int action, int row) {
    const int sourceRow = SourceRowOf(row);
    if (m_model->CanDo(action, sourceRow)) m_model->Do(action, {&sourceRow, 1});
}

void ListPage::DragRows(int before) {
    // Dragged rows are shown as they are numbered: in any other order they have no place of their own.
    const std::vector<int> rows = SelectedSourceRows();
    if (!rows.empty() && m_model->CanDragRows()) DoStep([&] { m_model->DragRows(rows, before); });
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
        DoForRow(action->id, row);
        return true;
    }
    // While rows are being gathered a balloon would only be in the way.
    if (!IsHeld(VK_CONTROL) && !IsHeld(VK_SHIFT)) ShowDetails(row, DetailsFor::Click);
    return false;
}

bool ListPage::PressKey(ListKey key) {
    const ListAction* const action = m_actions.FindByKey(key);
    if (!action || (action->rows == ActionRows::Focused && FocusedRow() < 0)) return false;
    DoAction(*action);
    return true;
}

void ListPage::ShowDetails(int row, DetailsFor wantedFor) {
    if (row < 0 || row >= RowCount()) return;
    const int sourceRow = SourceRowOf(row);
    const RowDetails details = m_model->Details(sourceRow);
    const auto asked = ++m_detailsAsked;
    if (!details.program) {
        m_list->ShowBalloon(row, {.title = details.title, .text = details.text, .link = {}}, nullptr);
        return;
    }
    const auto show = [this, row, details, asked, wantedFor,
                       key = m_model->Key(sourceRow)](const ProgramDetails& found) {
        // Only where the user still looks: the row may have gone, or the user to another one.
        if (asked != m_detailsAsked || row >= RowCount() || row != m_list->FocusedRow()) return;
        if (m_model->Key(SourceRowOf(row)) != key || ::GetFocus() != m_list->Window()) return;
        const std::string more = DescribeProgram(found, m_context.language);
        // What the row says itself is not worth covering others.
        if (more.empty() && wantedFor == DetailsFor::Click) return;
        const std::string text = details.text + more;
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

void ListPage::ShowSheet(const DetailsSheet& sheet) {
    const std::optional<HWND> owner = ModalOwner(::GetAncestor(Window(), GA_ROOT));
    if (!owner || m_sheet) return;
    DetailsDialog dialog(m_context.fonts, m_context.language, m_context.owner, sheet);
    m_sheet = &dialog;
    dialog.Show(*owner);
    m_sheet = nullptr;
}

void ListPage::UpdateSheet(const DetailsSheet& sheet) {
    if (m_sheet) m_sheet->Update(sheet);
}

std::optional<SavePlace> ListPage::AskSavePlace(const SaveWish& wish) {
    const std::optional<HWND> owner = ModalOwner(::GetAncestor(Window(), GA_ROOT));
    return owner ? brennvar::AskSavePlace(*owner, wish) : std::nullopt;
}

void ListPage::CopyText(const std::string& text) {
    CopyToClipboard(Window(), text, m_context.fonts.Text());
}

}  // namespace brennvar
