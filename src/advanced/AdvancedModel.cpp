#include "advanced/AdvancedModel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "config/ResourceIds.h"
#include "lists/RowOrder.h"
#include "rules/CoveredRules.h"
#include "rules/RuleSentence.h"
#include "views/ExchangeTexts.h"

namespace brennvar {
namespace {

constexpr RuleSet kSet = RuleSet::Advanced;
constexpr int kSwitch = 100;  // what Space and a click on a check box do; no control has this number

constexpr std::array<ListAction, 13> kActions = {
    {{IDC_ADVANCED_EDIT, Text{2071, "Edit..."}, ActionPlace::ButtonAndMenu, ActionRows::Focused, ListKey::Enter},
     {IDC_ADVANCED_DELETE, Text{2073, "Delete"}, ActionPlace::ButtonAndMenu, ActionRows::Selected, ListKey::Delete,
      false, true},
     {IDC_ADVANCED_UP, Text{2074, "Move up"}, ActionPlace::ButtonAndMenu, ActionRows::Selected, ListKey::ControlUp},
     {IDC_ADVANCED_DOWN, Text{2075, "Move down"}, ActionPlace::ButtonAndMenu, ActionRows::Selected,
      ListKey::ControlDown},
     {IDC_ADVANCED_ADD, Text{2070, "Add..."}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {IDC_ADVANCED_UNDO, Text{1830, "Undo"}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {IDC_ADVANCED_EXPORT, Text{609, "Export Rules..."}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {IDC_ADVANCED_IMPORT, Text{608, "Import Rules..."}, ActionPlace::ButtonAndMenu, ActionRows::None},
     {IDC_ADVANCED_DUPLICATE, Text{2072, "Duplicate..."}, ActionPlace::Menu, ActionRows::Focused},
     {IDC_ADVANCED_ENABLE, Text{2076, "Switch on"}, ActionPlace::Menu, ActionRows::Selected},
     {IDC_ADVANCED_DISABLE, Text{2077, "Switch off"}, ActionPlace::Menu, ActionRows::Selected},
     {kSwitch, Text{}, ActionPlace::Hidden, ActionRows::Selected, ListKey::Space},
     {IDC_WHY, Text{2174, "What if..."}, ActionPlace::Menu, ActionRows::None}}};

bool HaveSameIds(const StoredRules& a, const StoredRules& b) {
    return std::equal(a.Rules().begin(), a.Rules().end(), b.Rules().begin(), b.Rules().end(),
                      [](const AdvancedRule& x, const AdvancedRule& y) { return x.id == y.id; });
}

}  // namespace

AdvancedModel::AdvancedModel(const Parts& parts)
    : m_parts(parts),
      m_rules(parts.rules.Shown()),
      m_finding(
          parts.queue,
          [&language = parts.language, &stop = parts.stop](const Shared& rules) {
              Found found{.covered = FindCoveredRules(rules->Rules(), stop), .texts = {}};
              found.texts = RuleTexts(language, rules->Rules(), found.covered, stop);
              return std::optional(std::move(found));
          },
          [this](std::optional<Found> found, const Shared& rules) { OnFound(std::move(found), rules); }) {
    m_parts.rules.Watch(this);
    m_parts.exchange.Watch(*this);
    if (m_rules) m_finding.Refresh(m_rules);
}

AdvancedModel::~AdvancedModel() {
    m_parts.rules.Watch(nullptr);
    m_parts.exchange.Unwatch(*this);
}

std::vector<ListColumn> AdvancedModel::Columns() const {
    const Language& language = m_parts.language;
    std::vector<std::string> actions;
    for (const auto action : {AdvancedAction::Deny, AdvancedAction::Allow}) {
        actions.push_back(FillText(language.GetText(2086, "%1, covered"), {ActionText(language, action)}));
    }
    actions.push_back(language.GetText(2085, "Damaged"));
    // A narrow list does without the times first, then without this computer's own end, and last without the
    // program.
    enum Yields { kNever, kProgram, kLocal, kWhen };
    return {{.title = language.GetText(2064, "Place"), .width = 32, .isNumber = true},
            {.title = language.GetText(1028, "Action"),
             .width = 80,
             .longest = std::move(actions),
             .checkAction = kSwitch},
            {.title = language.GetText(2065, "What"), .width = 48},
            {.title = language.GetText(2066, "Local"), .width = 48, .yields = kLocal},
            {.title = language.GetText(2067, "Remote"), .width = 64},
            {.title = language.GetText(1422, "Program"), .width = 64, .yields = kProgram, .hasIcon = true},
            {.title = language.GetText(2068, "When"), .width = 48, .yields = kWhen},
            {.title = language.GetText(2069, "Description"), .width = 120, .takesRoom = true}};
}

std::string AdvancedModel::EmptyText() const {
    const Language& language = m_parts.language;
    if (!m_rules) return {};  // nothing is said of rules before they have been read
    if (!m_rules->IsReadable()) {
        return language.GetText(2081, "The rules cannot be read at the moment. F5 tries again.");
    }
    return language.GetText(
        2080,
        "There are no advanced rules yet. 'Add...' makes the first one: for an address, a port, "
        "a program or a time of the day.");
}

ListCell AdvancedModel::Cell(int row, int column) const {
    const AdvancedRule& rule = m_rules->Rule(row);
    const bool counts = rule.isEnabled && !rule.isDamaged && CoverOf(row) < 0;
    ListCell cell{.text = CellText(row, column), .tone = counts ? Tone::Plain : Tone::Muted};
    if (column != kActionColumn) return cell;
    cell.checked = rule.isEnabled;
    if (rule.isDamaged) {
        cell.tone = Tone::Ask;
    } else if (counts) {
        cell.tone = rule.action == AdvancedAction::Allow ? Tone::Allow : Tone::Deny;
    }
    return cell;
}

std::string AdvancedModel::CellText(int row, int column) const {
    return RuleCellText(m_parts.language, m_rules->Rule(row), row, CoverOf(row) >= 0,
                        static_cast<RuleColumn>(column));
}

std::optional<std::string_view> AdvancedModel::SearchedText(int row) const {
    return m_texts.IsEmpty() ? std::nullopt : std::optional(m_texts.Of(row));
}

std::uint64_t AdvancedModel::SortNumber(int row, int /*column*/) const {
    return static_cast<std::uint64_t>(row);
}

std::string AdvancedModel::CellTip(int row, int column) const {
    const Language& language = m_parts.language;
    if (column == kDescriptionColumn) return {};  // all of it, where it is cut
    std::string tip = RuleSentence(language, m_rules->Rule(row));
    if (const int cover = CoverOf(row); cover >= 0) {
        tip += '\n';
        tip += FillText(language.GetText(2087, "It never decides. Rule %1 above it does: %2"),
                        {std::to_string(cover + 1), RuleSentence(language, m_rules->Rule(cover))});
    }
    if (!m_rules->HasName(row)) {
        tip += '\n';
        tip += language.GetText(
            2088, "It has no identifier of its own, so that it cannot be changed from here. It can be duplicated.");
    }
    return tip;
}

std::optional<std::string> AdvancedModel::Program(int row) const {
    const std::string& program = m_rules->Rule(row).program;
    return program.empty() ? std::nullopt : std::optional(program);
}

std::span<const ListAction> AdvancedModel::Actions() const {
    return kActions;
}

bool AdvancedModel::CanDo(int action, int row) const {
    const bool isFree = m_parts.exchange.Current() == RuleExchange::Work::None;
    switch (action) {
        case IDC_ADVANCED_ADD:
        case IDC_ADVANCED_DUPLICATE:
        case IDC_WHY: return true;
        case IDC_ADVANCED_UNDO: return isFree && m_parts.exchange.Undoable(kSet);
        case IDC_ADVANCED_EXPORT:
        case IDC_ADVANCED_IMPORT: return isFree;
        default: break;
    }
    if (!m_rules->HasName(row)) return false;
    const AdvancedRule& rule = m_rules->Rule(row);
    switch (action) {
        case IDC_ADVANCED_UP:
        case IDC_ADVANCED_DOWN: return m_isInOrder;
        case IDC_ADVANCED_ENABLE: return !rule.isDamaged && !rule.isEnabled;
        case IDC_ADVANCED_DISABLE: return !rule.isDamaged && rule.isEnabled;
        case kSwitch: return !rule.isDamaged;
        default: return true;
    }
}

std::optional<std::string> AdvancedModel::Summary() const {
    const Language& language = m_parts.language;
    switch (m_parts.rules.LastNote()) {
        case AdvancedRules::Note::Lost:
            return language.GetText(2082, "The service has not stored the last change. What is stored is shown.");
        case AdvancedRules::Note::TooFar:
            return language.GetText(2083,
                                    "That is too far: a rule is moved place by place. Move fewer, or not so far.");
        default: break;
    }
    if (auto done = SummaryOf(m_parts.exchange, kSet, language)) return done;
    if (m_isInOrder) return std::nullopt;
    return language.GetText(2084, "To move rules, end the search and the sorting: their order is what decides.");
}

std::optional<ListProgress> AdvancedModel::Progress() const {
    return ProgressOf(m_parts.exchange, m_parts.language);
}

std::optional<ListQuestion> AdvancedModel::Question(int action, std::span<const int> rows) const {
    const Language& language = m_parts.language;
    if (action == IDC_ADVANCED_UNDO) return UndoQuestionOf(m_parts.exchange, kSet, language);
    if (action != IDC_ADVANCED_DELETE) return std::nullopt;
    const std::string question = rows.size() == 1
                                     ? language.GetText(2078, "Delete this rule?") + '\n' +
                                           RuleSentence(language, m_rules->Rule(rows.front()))
                                     : language.GetText(2079, "Delete the selected rules?") + '\n' +
                                           language.GetText(2298, "Rules:") + ' ' + std::to_string(rows.size());
    return ListQuestion{.text = question, .yes = language.GetText(2073, "Delete")};
}

void AdvancedModel::Do(int action, std::span<const int> rows) {
    AdvancedRules& rules = m_parts.rules;
    switch (action) {
        case IDC_ADVANCED_ADD: return rules.Add({});
        case IDC_ADVANCED_DUPLICATE: {
            AdvancedRule copy = m_rules->Rule(rows.front());
            copy.id = 0;
            return rules.Add(copy);
        }
        case IDC_ADVANCED_EDIT: return rules.Edit(m_rules->Rule(rows.front()).id);
        case IDC_ADVANCED_DELETE: return rules.Delete(IdsOf(rows));
        case IDC_ADVANCED_UP: return rules.MoveBy(IdsOf(rows), -1);
        case IDC_ADVANCED_DOWN: return rules.MoveBy(IdsOf(rows), 1);
        case IDC_ADVANCED_ENABLE: return rules.SetEnabled(IdsOf(rows), true);
        case IDC_ADVANCED_DISABLE: return rules.SetEnabled(IdsOf(rows), false);
        case kSwitch: return rules.SetEnabled(IdsOf(rows), !m_rules->Rule(rows.front()).isEnabled);
        case IDC_ADVANCED_UNDO: return m_parts.exchange.Undo(kSet);
        case IDC_WHY:
            if (View()) View()->Explain({});
            return;
        default: break;
    }
    if (View()) View()->PostCommand(action == IDC_ADVANCED_EXPORT ? IDM_EXPORT_ADVANCED : IDM_IMPORT_ADVANCED);
}

std::vector<std::uint32_t> AdvancedModel::IdsOf(std::span<const int> rows) const {
    std::vector<std::uint32_t> ids;
    for (const int row : rows) {
        // Another rule with this identifier is not meant.
        if (m_rules->HasName(row)) ids.push_back(m_rules->Rule(row).id);
    }
    return ids;
}

void AdvancedModel::OnOrder(const RowOrder& order) {
    m_isInOrder = order.searched.empty() &&
                  (order.column == RowOrder::kAsRead || (order.column == kNumberColumn && order.isAscending));
}

void AdvancedModel::DragRows(std::span<const int> rows, int before) {
    m_parts.rules.MoveBefore(IdsOf(rows), before);
}

void AdvancedModel::Read(ReadReason reason) {
    if (reason != ReadReason::LogsDeleted) m_parts.rules.Read();
}

void AdvancedModel::OnRulesChanged() {
    const Shared& shown = m_parts.rules.Shown();
    if (shown == m_rules) return TellOfSummary();
    const bool areSame = m_rules && HaveSameIds(*m_rules, *shown) && m_rules->IsReadable() == shown->IsReadable();
    ChangeRows([&] {
        // What was found of them holds until it has been found anew: marks would only flicker.
        if (!areSame) m_covered.clear();
        m_texts = {};
        m_rules = shown;
        return areSame ? ListView::Change::Looks : ListView::Change::Rows;
    });
    m_finding.Refresh(m_rules);
}

void AdvancedModel::OnFound(std::optional<Found> found, const Shared& rules) {
    if (rules != m_rules || !found) return;
    m_texts = std::move(found->texts);
    if (found->covered == m_covered) return;
    ChangeRows([&] {
        m_covered = std::move(found->covered);
        return ListView::Change::Looks;
    });
}

int AdvancedModel::CoverOf(int row) const {
    return static_cast<std::size_t>(row) < m_covered.size() ? m_covered[static_cast<std::size_t>(row)]
                                                            : kNotCovered;
}

void AdvancedModel::TellOfSummary() {
    if (!View()) return;
    View()->SummaryChanged();
    View()->ProgressChanged();  // has the buttons looked at as well
}

}  // namespace brennvar
