#include "rules/ApplicationRules.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "base/AsciiCase.h"
#include "base/DisplayName.h"

namespace brennvar {
namespace {

// A path against the path fields of many records. It is compared from its end, because programs differ in their
// file names more than in the folders before them, and in words of eight characters.
class PathMatcher {
public:
    explicit PathMatcher(std::string_view path) : m_path(path) {}
    [[nodiscard]] bool operator()(const ApplicationRuleRecord& record) const {
        // A field ends at its last byte even when that is not zero.
        constexpr std::size_t kLongest = sizeof record.path - 1;
        const std::size_t size = m_path.size();
        if (size > kLongest || (size < kLongest && record.path[size] != '\0')) return false;
        std::size_t left = size;
        for (; left >= kWord; left -= kWord) {
            if (!WordsMatch(record.path + left - kWord, m_path.data() + left - kWord)) return false;
        }
        return EqualsIgnoringCase({record.path, left}, m_path.substr(0, left));
    }

private:
    static constexpr std::size_t kWord = sizeof(std::uint64_t);

    static bool WordsMatch(const char* a, const char* b) {
        std::uint64_t x = 0;
        std::uint64_t y = 0;
        std::memcpy(&x, a, kWord);
        std::memcpy(&y, b, kWord);
        const std::uint64_t difference = x ^ y;
        if (difference == 0) return true;
        // The two cases of a letter differ in this bit alone; so do some pairs that are no letters.
        constexpr std::uint64_t kCaseBits = 0x2020202020202020;
        return (difference & ~kCaseBits) == 0 && EqualsIgnoringCase({a, kWord}, {b, kWord});
    }

    std::string_view m_path;
};

}  // namespace

ApplicationState StateOfAction(RuleAction action) {
    switch (action) {
        case RuleAction::Deny: return ApplicationState::Deny;
        case RuleAction::Allow: return ApplicationState::Allow;
        default: return ApplicationState::Ask;  // 0 and whatever the service may yet invent
    }
}

std::optional<RecordFile> RulesFileOpen(const std::string& rulesFile, Clock& clock) {
    return RecordFile::OpenShared(rulesFile, clock);
}

RuleAction LookupApplicationAction(const std::string& rulesFile, Clock& clock, std::string_view path) {
    // No field holds a zero within its text.
    if (path.empty() || path.find('\0') != std::string_view::npos) return RuleAction::Ask;
    auto file = RulesFileOpen(rulesFile, clock);
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
    auto file = RulesFileOpen(rulesFile, clock);
    if (!file) return {};
    const auto records = ReadAllRecords<ApplicationRuleRecord>(*file, Cipher::Enciphered);
    std::vector<ApplicationRow> rows;
    rows.reserve(records.size());
    for (const ApplicationState group : {ApplicationState::Deny, ApplicationState::Allow, ApplicationState::Ask}) {
        for (const ApplicationRuleRecord& record : records) {
            if (StateOfAction(record.action) != group) continue;
            const std::string_view path = TextOf(record.path);
            rows.push_back({FileNameOf(path), std::string(path), group});
        }
    }
    return rows;
}

}  // namespace brennvar
