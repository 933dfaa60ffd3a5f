#include "rules/ApplicationRules.h"

#include <algorithm>
#include <optional>

#include "base/AsciiCase.h"
#include "ipc/RecordFile.h"

namespace brennvar {
namespace {

// A path of fixed length against the path fields of many records. The field's end and the last characters decide
// for nearly every record: programs differ in their file names, not in the folders before them.
class PathMatcher {
public:
    explicit PathMatcher(std::string_view path) : m_path(path) {}
    [[nodiscard]] bool operator()(const ApplicationRuleRecord& record) const {
        const std::size_t size = m_path.size();
        // A field ends at its last byte even when that is not zero.
        if (size >= sizeof record.path || (size < sizeof record.path - 1 && record.path[size] != '\0'))
            return false;
        for (std::size_t i = size; i > 0; --i) {
            if (AsciiLower(record.path[i - 1]) != AsciiLower(m_path[i - 1])) return false;
        }
        return true;
    }

private:
    std::string_view m_path;
};

ApplicationState StateOf(RuleAction action) {
    switch (action) {
        case RuleAction::Deny: return ApplicationState::Deny;
        case RuleAction::Allow: return ApplicationState::Allow;
        default: return ApplicationState::Ask;  // 0 and whatever the service may yet invent
    }
}

std::string_view FileNamePart(std::string_view path) {
    const std::string_view name = path.substr(path.rfind('\\') + 1);
    return name.empty() ? path : name;
}

}  // namespace

RuleAction LookupApplicationAction(const std::string& rulesFile, Clock& clock, std::string_view path) {
    // No field holds a zero within its text.
    if (path.empty() || path.find('\0') != std::string_view::npos) return RuleAction::Ask;
    auto file = RecordFile::RulesFileOpen(rulesFile, clock);
    if (!file) return RuleAction::Ask;
    const PathMatcher matches(path);
    std::optional<RuleAction> action;
    ScanRecords<ApplicationRuleRecord>(*file, Cipher::Enciphered,
                                       [&](std::span<const ApplicationRuleRecord> rules) {
                                           const auto at = std::find_if(rules.begin(), rules.end(), matches);
                                           if (at != rules.end()) action = at->action;
                                           return !action;
                                       });
    return action.value_or(RuleAction::Ask);
}

std::vector<ApplicationRow> LoadApplicationRules(const std::string& rulesFile, Clock& clock) {
    const auto records = ReadAllRecords<ApplicationRuleRecord>(rulesFile, Cipher::Enciphered, clock);
    std::vector<ApplicationRow> rows;
    rows.reserve(records.size());
    for (const ApplicationState group : {ApplicationState::Deny, ApplicationState::Allow, ApplicationState::Ask}) {
        for (const ApplicationRuleRecord& record : records) {
            if (StateOf(record.action) != group) continue;
            const std::string_view path = TextOf(record.path);
            rows.push_back({std::string(FileNamePart(path)), std::string(path), group});
        }
    }
    return rows;
}

}  // namespace brennvar
