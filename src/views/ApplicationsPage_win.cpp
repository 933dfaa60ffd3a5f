#include "views/ApplicationsPage_win.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/MessageDialog_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kSettleTimer = 1;
constexpr UINT kSettleTime = 200;  // ms, which the service needs to rewrite its file
constexpr UINT kMessageProgramRead = WM_APP + 1;

// At 96 pixels per inch.
constexpr int kFooterHeight = 34;
constexpr int kButtonGap = 8;

using Order = ApplicationList::Order;

}  // namespace

struct ApplicationsPage::ActionButton {
    int id;
    Text text;
    RuleCommandAction action;
    int command;  // tells the owner
};

const std::array<ApplicationsPage::ActionButton, ApplicationsPage::kActionCount>& ApplicationsPage::Actions() {
    static constexpr std::array<ActionButton, kActionCount> kActions = {
        {{IDC_APPLICATIONS_ALLOW, Text{407, "Allow"}, RuleCommandAction::Allow, IDM_APPLICATION_ALLOW},
         {IDC_APPLICATIONS_DENY, Text{408, "Deny"}, RuleCommandAction::Deny, IDM_APPLICATION_DENY},
         {IDC_APPLICATIONS_ASK, Text{409, "Ask"}, RuleCommandAction::Ask, IDM_APPLICATION_ASK},
         {IDC_APPLICATIONS_REMOVE, Text{406, "Remove"}, RuleCommandAction::Remove, IDM_APPLICATION_REMOVE}}};
    return kActions;
}

ApplicationsPage::ApplicationsPage(const ListPageContext& context, PageTexts texts, Parts parts)
    : ListPage(context, std::move(texts), "Applications"), m_parts(std::move(parts)), m_programs([this] {
          if (const HWND target = m_postTarget) ::PostMessageA(target, kMessageProgramRead, 0, 0);
      }) {}

ListPage::Content ApplicationsPage::DescribeList() const {
    return {.columns = CApplicationsTree::Columns(GetLanguage()),
            .emptyText = {}};  // nothing is said of rules before they have been read
}

std::unique_ptr<CTree> ApplicationsPage::MakeTree() {
    auto tree = std::make_unique<CApplicationsTree>(GetLook().fonts);
    m_tree = tree.get();
    return tree;
}

void ApplicationsPage::OnListCreated() {
    m_postTarget = Window();
    m_tree->wishes = {.otherAction =
                          [this](int row) {
                              const int sourceRow = SourceRowOf(row);
                              if (!m_rows.IsLeaving(sourceRow)) {
                                  Change({sourceRow}, CommandActionOf(NextState(m_rows.StateOf(sourceRow))));
                              }
                          },
                      .details = [this](int row) { ShowDetails(row); },
                      .removal = [this] { ChangeSelection(RuleCommandAction::Remove); }};
    for (std::size_t index = 0; index < kActionCount; ++index) {
        const ActionButton& action = Actions()[index];
        m_buttons[index].Create(Window(), kButton, GetLanguage().GetText(action.text), action.id, GetLook());
    }
    m_programs.onIcon = [this](const std::string& path) { RepaintRowsOf(path); };
    m_parts.changes.onOver = [this] { SettleLater(); };
    OnSelectionChanged();
}

void ApplicationsPage::OnDestroy() {
    m_postTarget = nullptr;
    ListPage::OnDestroy();
}

int ApplicationsPage::FooterHeight() const {
    return Scale(kFooterHeight);
}

void ApplicationsPage::OnPlaceFooter(const RECT& place) {
    LONG left = place.right;
    for (std::size_t index = kActionCount; index-- > 0;) {
        const SIZE size = m_buttons[index].Size();
        left -= size.cx;
        m_buttons[index].MoveTo(left, place.bottom - size.cy);
        left -= Scale(kButtonGap);
    }
}

TreeCell ApplicationsPage::SourceCell(int row, int column) const {
    if (column == CApplicationsTree::kActionColumn) {
        TreeCell cell = CApplicationsTree::ActionCell(m_rows.StateOf(row), GetLanguage());
        if (m_rows.IsLeaving(row)) cell.text.clear();
        return cell;
    }
    TreeCell cell;
    cell.text = SourceText(row, column);
    if (m_rows.IsLeaving(row)) cell.tone = Tone::Muted;
    return cell;
}

std::string ApplicationsPage::SourceText(int row, int column) const {
    switch (column) {
        case CApplicationsTree::kNameColumn: return m_rows.Row(row).name;
        case CApplicationsTree::kPathColumn: return m_rows.Row(row).path;
        default: return SourceCell(row, column).text;
    }
}

void ApplicationsPage::OnShow() {
    Reload();
}

void ApplicationsPage::OnHide() {
    ++m_detailsAsked;
    m_tree->HideBalloon();
}

void ApplicationsPage::OnRulesChanged() {
    // A hidden page reads them when it is opened.
    if (IsShown()) Read(Order::Kept);
}

void ApplicationsPage::Reload() {
    Read(m_settled < m_parts.changes.Last() ? Order::Kept : Order::AsRead);
}

void ApplicationsPage::Read(Order order) {
    if (m_isReading) {
        m_readsAgain = true;
        m_nextOrder = order;
        return;
    }
    m_isReading = true;
    m_parts.read([this, over = m_settled, order](std::vector<ApplicationRow> rows) {
        m_isReading = false;
        OnRead(std::move(rows), over, order);
        if (std::exchange(m_readsAgain, false)) Read(m_nextOrder);
    });
}

void ApplicationsPage::OnRead(std::vector<ApplicationRow> rows, std::uint64_t over, Order order) {
    const bool isFirst = !std::exchange(m_wasRead, true);
    if (isFirst) {
        SetEmptyText(
            GetLanguage().GetText(1019,
                                  "There are no application rules yet. A program gets one when your answer to "
                                  "its question is remembered."));
    }
    ChangeRowsIfOther([&] { return m_rows.Take(std::move(rows), over, order) || isFirst; });
}

void ApplicationsPage::SettleLater() {
    ::SetTimer(Window(), kSettleTimer, kSettleTime, nullptr);
}

void ApplicationsPage::OnTimer(UINT_PTR id) {
    if (id != kSettleTimer) return;
    // While the service works on it, or the user is asked for the password, what was clicked stays.
    if (m_parts.changes.Over() < m_parts.changes.Last() && !m_parts.isServiceMissing()) return;
    ::KillTimer(Window(), kSettleTimer);
    m_settled = m_parts.changes.Last();
    Read(Order::Kept);
}

std::optional<LRESULT> ApplicationsPage::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != kMessageProgramRead) return ListPage::OnMessage(message, wParam, lParam);
    m_programs.RunCompletions();
    return 0;
}

void ApplicationsPage::Change(const std::vector<int>& sourceRows, RuleCommandAction action) {
    std::unordered_set<std::string> paths;  // several records of a path are one rule
    for (const int row : sourceRows) {
        const std::string& path = m_rows.Row(row).path;
        // There is no program without a path, and the service could not find its record.
        if (path.empty() || !paths.insert(path).second) continue;
        m_rows.Change(row, action, m_parts.changes.Add({.path = path, .action = action}));
    }
    if (paths.empty()) return;
    RowTextsChanged();
    for (const ActionButton& button : Actions()) {
        if (button.action == action) PostToOwner(button.command);
    }
    SettleLater();
}

void ApplicationsPage::ChangeSelection(RuleCommandAction action) {
    std::vector<int> rows = SelectedSourceRows();
    if (rows.empty()) return;
    if (action == RuleCommandAction::Remove && rows.size() > 1) {
        if (!ConfirmRemoval(rows.size())) return;
        rows = SelectedSourceRows();  // the list may have been read again meanwhile
    }
    Change(rows, action);
}

bool ApplicationsPage::ConfirmRemoval(std::size_t count) const {
    const Language& language = GetLanguage();
    return MessageDialog(GetLook().fonts,
                         {.caption = language.GetText(41, "Brennvar Personal Firewall"),
                          .message = language.GetText(1360, "Remove the rules of the selected applications?") +
                                     "\n" + language.GetText(1361, "Number:") + " " + std::to_string(count),
                          .ok = language.GetText(406, "Remove"),
                          .cancel = language.GetText(1001, "Cancel"),
                          .isCancelDefault = true})
        .Ask(::GetAncestor(Window(), GA_ROOT));
}

void ApplicationsPage::OnSelectionChanged() {
    const bool hasSelection = !m_tree->SelectedRows().IsEmpty();
    for (const CButton& button : m_buttons) {
        // The keyboard must not stay in a button that no longer takes it.
        if (!hasSelection && ::GetFocus() == button.Window()) ::SetFocus(m_tree->Window());
        if ((::IsWindowEnabled(button.Window()) != FALSE) != hasSelection) {
            ::EnableWindow(button.Window(), hasSelection);
        }
    }
}

void ApplicationsPage::AddMenuItems(CPopupMenu& menu) const {
    const bool hasSelection = !m_tree->SelectedRows().IsEmpty();
    for (const ActionButton& action : Actions()) {
        std::string text = GetLanguage().GetText(action.text);
        if (action.action == RuleCommandAction::Remove) text += "\tDel";
        menu.Add(action.id, text, MenuImage::None, {.isDisabled = !hasSelection});
    }
    menu.AddSeparator();
    menu.Add(IDC_APPLICATIONS_DETAILS, GetLanguage().GetText(1362, "D&etails") + "\tEnter", MenuImage::About,
             {.isDisabled = m_tree->FocusedRow() < 0});
    menu.AddSeparator();
}

void ApplicationsPage::OnPageCommand(int id) {
    if (id == IDC_APPLICATIONS_DETAILS && m_tree->FocusedRow() >= 0) ShowDetails(m_tree->FocusedRow());
    for (const ActionButton& button : Actions()) {
        if (button.id == id) ChangeSelection(button.action);
    }
}

void ApplicationsPage::ShowDetails(int row) {
    const std::string path = m_rows.Row(SourceRowOf(row)).path;
    m_programs.ReadDetails(path, [this, row, path, asked = ++m_detailsAsked](const ProgramDetails& details) {
        // Only where the user still looks: the row may have gone, or the user to another one.
        if (asked != m_detailsAsked || row >= RowCount() || row != m_tree->FocusedRow()) return;
        const int sourceRow = SourceRowOf(row);
        if (m_rows.Row(sourceRow).path != path || ::GetFocus() != m_tree->Window()) return;
        m_tree->ShowBalloon(row, DetailTexts(sourceRow, details), m_programs.Icon(path));
    });
}

BalloonTexts ApplicationsPage::DetailTexts(int sourceRow, const ProgramDetails& details) const {
    const Language& language = GetLanguage();
    const ApplicationRow& row = m_rows.Row(sourceRow);
    std::string text = row.path;
    const auto add = [&text](const std::string& label, const std::string& value) {
        if (!value.empty()) text.append("\n").append(label).append(" ").append(value);
    };
    switch (details.place) {
        case ProgramDetails::Place::Here:
            add(language.GetText(1363, "Description:"), details.version.description);
            add(language.GetText(1364, "Company:"), details.version.company);
            add(language.GetText(1365, "Version:"), details.version.version);
            break;
        case ProgramDetails::Place::Missing:
            text.append("\n").append(language.GetText(1366, "This file does not exist."));
            break;
        case ProgramDetails::Place::OtherMachine:
            text.append("\n").append(
                language.GetText(1367, "This file is on another machine and was not looked into."));
            break;
    }
    return {.title = row.name, .text = text, .link = {}};
}

void ApplicationsPage::RepaintRowsOf(const std::string& path) const {
    for (int row = m_tree->FirstVisibleRow(); row < RowCount() && IsInSight(row); ++row) {
        if (m_rows.Row(SourceRowOf(row)).path == path) m_tree->RefreshRow(row);
    }
}

}  // namespace brennvar
