#include "views/ImportRows.h"

#include "base/DisplayName.h"
#include "config/Amounts.h"
#include "rules/RuleSentence.h"
#include "views/ApplicationList.h"

namespace brennvar {
namespace {

using Kind = RuleChange::Kind;

Kind KindOf(const FileChange& file) {
    return !file.before ? Kind::Added : !file.after ? Kind::Removed : Kind::Changed;
}

}  // namespace

const FileChange* ImportRows::FileAt(int row) const {
    const auto index = static_cast<std::size_t>(row);
    return index < m_preview.files.size() ? &m_preview.files[index] : nullptr;
}

const RuleChange& ImportRows::RuleAt(int row) const {
    return m_preview.rules[static_cast<std::size_t>(row) - m_preview.files.size()];
}

const AdvancedRuleChange* ImportRows::AdvancedAt(int row) const {
    const std::size_t first = m_preview.files.size() + m_preview.rules.size();
    const auto index = static_cast<std::size_t>(row);
    return index < first ? nullptr : &m_preview.advanced[index - first];
}

std::string ImportRows::NameOf(AdvancedRuleChange::Kind kind) const {
    switch (kind) {
        case AdvancedRuleChange::Kind::Added: return NameOf(Kind::Added);
        case AdvancedRuleChange::Kind::Removed: return NameOf(Kind::Removed);
        case AdvancedRuleChange::Kind::Changed: return NameOf(Kind::Changed);
        default: return m_language.GetText(2172, "Moved");
    }
}

std::string ImportRows::CellOf(const AdvancedRuleChange& change, int column) const {
    // "Deny (3)": what it does, and its place from above.
    const auto state = [this](const std::optional<AdvancedRule>& rule, std::size_t place) {
        return rule ? ActionText(m_language, rule->action) + " (" + std::to_string(place + 1) + ")" : std::string();
    };
    switch (column) {
        case kChange: return NameOf(change.kind);
        case kPath: break;
        case kBefore: return state(change.before, change.placeBefore);
        default: return state(change.after, change.placeAfter);
    }
    const AdvancedRule& rule = change.after ? *change.after : *change.before;
    const std::string sentence = RuleSentence(m_language, rule);
    std::string text = OneLine(rule.description) + (rule.description.empty() ? "" : ": ");
    // What it has been, where that is not the same.
    const std::string old = change.before ? RuleSentence(m_language, *change.before) : sentence;
    if (old != sentence) text += old + " -> ";
    return text + sentence;
}

std::string ImportRows::NameOf(Kind kind) const {
    switch (kind) {
        case Kind::Added: return m_language.GetText(1867, "Added");
        case Kind::Removed: return m_language.GetText(1868, "Removed");
        default: return m_language.GetText(1869, "Changed");
    }
}

std::vector<std::string> ImportRows::Titles() const {
    return {m_language.GetText(1864, "Change"),
            HasSentences() ? m_language.GetText(2167, "What it says") : m_language.GetText(1026, "Path"),
            m_language.GetText(1865, "Now"), m_language.GetText(1866, "After the import")};
}

std::string ImportRows::Counts() const {
    const auto count = [](const std::string& what, std::size_t number) {
        return what + ": " + std::to_string(number);
    };
    constexpr const char* kGap = "     ";
    return count(NameOf(Kind::Added), m_preview.added) + kGap + count(NameOf(Kind::Removed), m_preview.removed) +
           kGap + count(NameOf(Kind::Changed), m_preview.changed) + kGap +
           (HasSentences() ? count(NameOf(AdvancedRuleChange::Kind::Moved), m_preview.moved) + kGap
                           : std::string()) +
           count(m_language.GetText(1863, "Unchanged"), m_preview.unchanged);
}

std::vector<std::string> ImportRows::Remarks() const {
    std::vector<std::string> remarks;
    if (m_preview.isUnreadable) {
        remarks.push_back(
            m_language.GetText(1871,
                               "The rules of this archive cannot be read here: they are damaged, or of an "
                               "installation with another key."));
    }
    if (m_preview.damaged > 0) {
        remarks.push_back(m_language.GetText(2173, "Damaged rules, which never match:") + ' ' +
                          std::to_string(m_preview.damaged));
    }
    if (!m_preview.files.empty()) {
        remarks.push_back(m_language.GetText(1873, "Other files of the archive:") + ' ' +
                          std::to_string(m_preview.files.size()));
    }
    if (m_preview.skipped > 0) {
        remarks.push_back(m_language.GetText(1874, "Left out because of their names:") + ' ' +
                          std::to_string(m_preview.skipped));
    }
    return remarks;
}

std::string ImportRows::EmptyText() const {
    return m_preview.isUnreadable ? std::string() : m_language.GetText(1872, "Nothing would change.");
}

std::string ImportRows::CellText(int row, int column) const {
    if (const FileChange* const file = FileAt(row)) {
        const auto size = [this](const std::optional<std::uint64_t>& bytes) {
            return bytes ? FormatBytes(*bytes, AmountWords(m_language)) : std::string();
        };
        switch (column) {
            case kChange: return NameOf(KindOf(*file));
            case kPath: return file->path;
            case kBefore: return size(file->before);
            default: return size(file->after);
        }
    }
    if (const AdvancedRuleChange* const change = AdvancedAt(row)) return CellOf(*change, column);
    const RuleChange& rule = RuleAt(row);
    switch (column) {
        case kChange: return NameOf(rule.kind);
        case kPath: return rule.path;
        case kBefore:
            return rule.kind == Kind::Added ? std::string() : m_language.GetText(NameOfState(rule.before));
        default: return rule.kind == Kind::Removed ? std::string() : m_language.GetText(NameOfState(rule.after));
    }
}

Tone ImportRows::ToneOf(int row, int column) const {
    if (FileAt(row) || (column != kBefore && column != kAfter) || CellText(row, column).empty()) return Tone::Plain;
    if (const AdvancedRuleChange* const change = AdvancedAt(row)) {
        const auto& rule = column == kBefore ? change->before : change->after;
        return rule->action == AdvancedAction::Allow ? Tone::Allow : Tone::Deny;
    }
    return ToneOfState(column == kBefore ? RuleAt(row).before : RuleAt(row).after);
}

std::vector<std::string> ImportRows::Longest(int column) const {
    std::vector<std::string> longest;
    if (column == kChange) {
        for (const Kind kind : {Kind::Added, Kind::Removed, Kind::Changed}) longest.push_back(NameOf(kind));
        if (HasSentences()) longest.push_back(NameOf(AdvancedRuleChange::Kind::Moved));
    } else if (column == kBefore || column == kAfter) {
        for (const auto state : {ApplicationState::Deny, ApplicationState::Allow, ApplicationState::Ask}) {
            longest.push_back(m_language.GetText(NameOfState(state)));
        }
    }
    return longest;
}

}  // namespace brennvar
