#include "views/ApplicationsModel.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "base/AsciiCase.h"
#include "config/ResourceIds.h"
#include "ipc/CommandRecord.h"
#include "views/ExchangeTexts.h"

namespace brennvar {
namespace {

using Order = ApplicationList::Order;

constexpr RuleSet kSet = RuleSet::Applications;
constexpr int kNextAction = 100;  // what a click in the action cell does; no control has this number

constexpr std::array<ListAction, 9> kActions = {
    {{IDC_APPLICATIONS_ALLOW, Text{407, "Allow"}, ActionPlace::ButtonAndMenu},
     {IDC_APPLICATIONS_DENY, Text{408, "Deny"}, ActionPlace::ButtonAndMenu},
     {IDC_APPLICATIONS_ASK, Text{409, "Ask"}, ActionPlace::ButtonAndMenu},
     {IDC_APPLICATIONS_REMOVE, Text{406, "Remove"}, ActionPlace::ButtonAndMenu, ActionRows::Selected,
      ListKey::Delete, false, true},
     {IDC_APPLICATIONS_UNDO, Text{1830, "Undo"}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {IDC_APPLICATIONS_EXPORT, Text{609, "Export Rules..."}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {IDC_APPLICATIONS_IMPORT, Text{608, "Import Rules..."}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {IDC_APPLICATIONS_DETAILS, Text{1362, "D&etails"}, ActionPlace::Menu, ActionRows::Focused, ListKey::Enter,
      true},
     {kNextAction, Text{}, ActionPlace::Hidden, ActionRows::Focused, ListKey::Space}}};

struct ChangeInfo {
    int id;  // of the list's action
    RuleCommandAction action;
    int command;  // tells the owner
};
constexpr std::array<ChangeInfo, 4> kChanges = {
    {{IDC_APPLICATIONS_ALLOW, RuleCommandAction::Allow, IDM_APPLICATION_ALLOW},
     {IDC_APPLICATIONS_DENY, RuleCommandAction::Deny, IDM_APPLICATION_DENY},
     {IDC_APPLICATIONS_ASK, RuleCommandAction::Ask, IDM_APPLICATION_ASK},
     {IDC_APPLICATIONS_REMOVE, RuleCommandAction::Remove, IDM_APPLICATION_REMOVE}}};

}  // namespace

ApplicationsModel::ApplicationsModel(const Language& language, TaskQueue& reads,
                                     std::function<std::vector<ApplicationRow>()> load, ApplicationChanges& changes,
                                     const ServiceLink& link, RuleExchange& exchange)
    : m_language(language),
      m_changes(changes),
      m_link(link),
      m_exchange(exchange),
      m_file(
          reads, [load = std::move(load)](const Request&) { return load(); },
          [this](std::optional<std::vector<ApplicationRow>> rows, const Request& request) {
              OnRead(std::move(rows).value_or(std::vector<ApplicationRow>()), request);
          }) {
    m_changes.Watch(*this);
    m_exchange.Watch(*this);
}

ApplicationsModel::~ApplicationsModel() {
    m_exchange.Unwatch(*this);
}

std::vector<ListColumn> ApplicationsModel::Columns() const {
    std::vector<std::string> actions;
    for (const auto state : {ApplicationState::Deny, ApplicationState::Allow, ApplicationState::Ask}) {
        actions.push_back(m_language.GetText(NameOfState(state)));
    }
    return {{.title = m_language.GetText(1027, "Name"), .width = 200, .clickAction = IDC_APPLICATIONS_DETAILS},
            {.title = m_language.GetText(1026, "Path"), .width = 240, .takesRoom = true, .isPath = true},
            {.title = m_language.GetText(1028, "Action"),
             .width = 96,
             .longest = std::move(actions),
             .clickAction = kNextAction}};
}

std::string ApplicationsModel::EmptyText() const {
    if (!m_wasRead) return {};  // nothing is said of rules before they have been read
    return m_language.GetText(1019,
                              "No rules yet. A program appears here once its question is answered with "
                              "'Remember my answer'.");
}

ListCell ApplicationsModel::Cell(int row, int column) const {
    const bool isLeaving = m_rows.IsLeaving(row);
    const Tone tone = column == kActionColumn ? ToneOfState(m_rows.StateOf(row))
                      : isLeaving             ? Tone::Muted
                                              : Tone::Plain;
    return {.text = CellText(row, column), .tone = tone};
}

std::string ApplicationsModel::CellText(int row, int column) const {
    switch (column) {
        case kNameColumn: return m_rows.Row(row).name;
        case kPathColumn: return m_rows.Row(row).path;
        default: return m_rows.IsLeaving(row) ? "" : m_language.GetText(NameOfState(m_rows.StateOf(row)));
    }
}

int ApplicationsModel::FindRow(const std::string& key) const {
    for (int row = 0; row < RowCount(); ++row) {
        if (EqualsIgnoringCase(m_rows.Row(row).path, key)) return row;
    }
    return -1;
}

RowDetails ApplicationsModel::Details(int row) const {
    const ApplicationRow& rule = m_rows.Row(row);
    return {.title = rule.name, .text = rule.path, .program = rule.path};
}

std::span<const ListAction> ApplicationsModel::Actions() const {
    return kActions;
}

bool ApplicationsModel::CanDo(int action, int /*row*/) const {
    const bool isFree = m_exchange.Current() == RuleExchange::Work::None;
    switch (action) {
        case IDC_APPLICATIONS_UNDO:
            return isFree && (m_removals.empty() ? m_exchange.Undoable(kSet) != nullptr : CanUndoRemoval());
        case IDC_APPLICATIONS_EXPORT:
        case IDC_APPLICATIONS_IMPORT: return isFree;
        default: return true;
    }
}

std::optional<std::string> ApplicationsModel::Summary() const {
    if (CanUndoRemoval()) {
        return m_language.GetText(1856, "Rules removed:") + ' ' + std::to_string(m_removals.back().rules.size()) +
               ". " + m_language.GetText(1857, "'Undo' brings them back.");
    }
    return SummaryOf(m_exchange, kSet, m_language);
}

std::optional<ListProgress> ApplicationsModel::Progress() const {
    return ProgressOf(m_exchange, m_language);
}

std::optional<ListQuestion> ApplicationsModel::Question(int action, std::span<const int> rows) const {
    if (action == IDC_APPLICATIONS_UNDO && m_removals.empty()) {
        return UndoQuestionOf(m_exchange, kSet, m_language);
    }
    if (action != IDC_APPLICATIONS_REMOVE || rows.size() < 2) return std::nullopt;
    return ListQuestion{.text = m_language.GetText(1360, "Remove the rules of the selected applications?") + "\n" +
                                m_language.GetText(1361, "Applications:") + " " + std::to_string(rows.size()),
                        .yes = m_language.GetText(406, "Remove")};
}

void ApplicationsModel::Do(int action, std::span<const int> rows) {
    switch (action) {
        case IDC_APPLICATIONS_UNDO: return Undo();
        case IDC_APPLICATIONS_EXPORT:
        case IDC_APPLICATIONS_IMPORT:
            if (View()) {
                View()->PostCommand(action == IDC_APPLICATIONS_EXPORT ? IDM_EXPORT_RULES : IDM_IMPORT_RULES);
            }
            return;
        default: break;
    }
    if (action == kNextAction && m_rows.IsLeaving(rows.front())) return;
    const auto isMeant = [&](const ChangeInfo& info) {
        return action == kNextAction ? info.action == CommandActionOf(NextState(m_rows.StateOf(rows.front())))
                                     : info.id == action;
    };
    const auto info = std::find_if(kChanges.begin(), kChanges.end(), isMeant);
    if (info != kChanges.end()) Change(rows, info->action, info->command);
}

void ApplicationsModel::Change(std::span<const int> rows, RuleCommandAction action, int command) {
    Removal removal;
    if (action == RuleCommandAction::Remove) removal = RemovalOf(rows);
    std::unordered_set<std::string> paths;  // several records of a path are one rule
    ChangeRows([&] {
        for (const int row : rows) {
            const std::string& path = m_rows.Row(row).path;
            // There is no program without a path, and the service could not find its record.
            if (path.empty() || !paths.insert(path).second) continue;
            m_rows.Change(row, action, m_changes.Add({.path = path, .action = action}));
        }
        return ListView::Change::Looks;
    });
    if (paths.empty()) return;
    if (!removal.rules.empty()) {
        removal.number = m_changes.Last();
        m_removals.push_back(std::move(removal));
        TellOfUndo();
    }
    if (View()) View()->PostCommand(command);
    SettleLater();
}

ApplicationsModel::Removal ApplicationsModel::RemovalOf(std::span<const int> rows) const {
    Removal removal;
    std::unordered_set<std::string> paths;  // the first record of a path is the one that counts
    for (const int row : rows) {
        const std::string& path = m_rows.Row(row).path;
        if (path.empty() || m_rows.IsLeaving(row) || !paths.insert(path).second) continue;
        removal.rules.push_back({.path = path, .action = CommandActionOf(m_rows.StateOf(row))});
    }
    return removal;
}

void ApplicationsModel::Undo() {
    if (m_removals.empty()) return m_exchange.Undo(kSet);
    if (!CanUndoRemoval()) return;
    // They stay here until they are seen: the password may be refused, and the service missing.
    Removal& removal = m_removals.back();
    for (const ApplicationChange& change : removal.rules) removal.number = m_changes.Add(change);
    removal.isBeingUndone = true;
    TellOfUndo();
    if (View()) View()->PostCommand(IDM_APPLICATION_ALLOW);  // any of these has all changes carried
    SettleLater();
}

void ApplicationsModel::ForgetWhatIsThere(std::uint64_t over) {
    if (m_removals.empty()) return;
    std::unordered_set<std::string> there;
    there.reserve(static_cast<std::size_t>(RowCount()));
    for (int row = 0; row < RowCount(); ++row) there.insert(LowerCase(m_rows.Row(row).path));
    bool isOther = false;
    for (Removal& removal : m_removals) {
        if (removal.number > over) continue;
        // Brought back, or given rules again by somebody; or the removal was refused.
        const auto gone = std::erase_if(removal.rules, [&there](const ApplicationChange& change) {
            return there.contains(LowerCase(change.path));
        });
        isOther = std::exchange(removal.isBeingUndone, false) || gone > 0 || isOther;
    }
    std::erase_if(m_removals, [](const Removal& removal) { return removal.rules.empty(); });
    while (m_removals.size() > 1 && m_removals[1].number <= over) m_removals.erase(m_removals.begin());
    if (isOther) TellOfUndo();
}

void ApplicationsModel::TellOfUndo() {
    if (!View()) return;
    View()->SummaryChanged();
    View()->ProgressChanged();  // has the buttons looked at as well
}

void ApplicationsModel::OnRulesReplaced() {
    m_removals.clear();  // other rules than those that they were removed from
    TellOfUndo();
    SettleLater();
}

void ApplicationsModel::Read(ReadReason reason) {
    if (reason == ReadReason::LogsDeleted) return;
    const bool isUnderWay = m_settled < m_changes.Last();
    ReadInOrder(reason == ReadReason::RulesChanged || isUnderWay ? Order::Kept : Order::AsRead);
}

void ApplicationsModel::SettleLater() {
    if (View()) View()->WakeIn(kWritingPause);
}

void ApplicationsModel::OnWake() {
    // While the service works on it, or the user is asked for the password, what was clicked stays.
    if (m_changes.Over() < m_changes.Last()) {
        const PeerState state = m_link.StateOf(kCommandPipeName);
        if (state != PeerState::Missing && state != PeerState::Foreign) return SettleLater();
        m_changes.GiveUp();
    }
    m_settled = m_changes.Last();
    ReadInOrder(Order::Kept);
}

void ApplicationsModel::OnRead(std::vector<ApplicationRow> rows, const Request& request) {
    const bool isFirst = !std::exchange(m_wasRead, true);
    ChangeRows([&] {
        const bool isOther = m_rows.Take(std::move(rows), request.over, request.order) || isFirst;
        return isOther ? ListView::Change::Rows : ListView::Change::Looks;
    });
    ForgetWhatIsThere(request.over);
}

}  // namespace brennvar
