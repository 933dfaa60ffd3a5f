#include "rules/ApplicationRules.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "base/AsciiCase.h"
#include "base/DisplayName.h"
#include "ipc/RecordCipher.h"

namespace brennvar {
namespace {

// A path against the path fields of many records as they stand in the file. The path is enciphered once instead of
// every record deciphered; what is combined with the same stream differs in the same bits. It is compared from its
// end, because programs differ in their file names more than in the folders before them, and in words of eight
// characters.
class PathMatcher {
public:
    explicit PathMatcher(std::string_view path) : m_path(path) {
        if (path.size() > kLongest) return;
        std::memcpy(m_enciphered.path, path.data(), path.size());
        CipherRecords(WritableRecordBytes(m_enciphered), sizeof m_enciphered);
    }

    [[nodiscard]] bool operator()(const ApplicationRuleRecord& enciphered) const {
        const std::size_t size = m_path.size();
        // A field ends at its last byte even when that is not zero.
        if (size > kLongest || (size < kLongest && enciphered.path[size] != m_enciphered.path[size])) return false;
        std::size_t left = size;
        for (; left >= kWord; left -= kWord) {
            if (!PartMatches(enciphered, left - kWord, kWord)) return false;
        }
        return PartMatches(enciphered, 0, left);
    }

private:
    static constexpr std::size_t kLongest = sizeof ApplicationRuleRecord::path - 1;
    static constexpr std::size_t kWord = sizeof(std::uint64_t);

    // size: at most kWord.
    [[nodiscard]] bool PartMatches(const ApplicationRuleRecord& enciphered, std::size_t at,
                                   std::size_t size) const {
        std::uint64_t theirs = 0;
        std::uint64_t ours = 0;
        std::memcpy(&theirs, enciphered.path + at, size);
        std::memcpy(&ours, m_enciphered.path + at, size);
        const std::uint64_t difference = theirs ^ ours;
        if (difference == 0) return true;
        // The two cases of a letter differ in this bit alone; so do some pairs that are no letters.
        constexpr std::uint64_t kCaseBits = 0x2020202020202020;
        if ((difference & ~kCaseBits) != 0) return false;
        std::uint64_t plain = 0;
        std::memcpy(&plain, m_path.data() + at, size);
        plain ^= difference;
        return EqualsIgnoringCase({reinterpret_cast<const char*>(&plain), size}, m_path.substr(at, size));
    }

    std::string_view m_path;
    ApplicationRuleRecord m_enciphered{};
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
    // Plain: the matcher takes the records as they are.
    ScanRecords<ApplicationRuleRecord>(*file, Cipher::Plain, [&](std::span<const ApplicationRuleRecord> rules) {
        const auto at = std::find_if(rules.begin(), rules.end(), matches);
        if (at == rules.end()) return true;
        ApplicationRuleRecord rule = *at;
        CipherRecords(WritableRecordBytes(rule), sizeof rule);
        action = rule.action;
        return false;
    });
    return action.value_or(RuleAction::Ask);
}

std::vector<ApplicationRow> LoadApplicationRules(const std::string& rulesFile, Clock& clock) {
    auto file = RulesFileOpen(rulesFile, clock);
    if (!file) return {};
    const std::uint64_t length = file->Rewind();
    if (length > kWholeFileLimit) return {};
    std::vector<ApplicationRow> rows;
    rows.reserve(static_cast<std::size_t>(length / sizeof(ApplicationRuleRecord)));
    // Piece by piece: the records themselves are twice as long as what is kept of them.
    ScanRecords<ApplicationRuleRecord>(
        *file, Cipher::Enciphered, [&rows](std::span<const ApplicationRuleRecord> records) {
            for (const ApplicationRuleRecord& record : records) {
                const std::string_view path = TextOf(record.path);
                rows.push_back({FileNameOf(path), std::string(path), StateOfAction(record.action)});
            }
            return true;
        });
    const auto isNot = [](ApplicationState state) {
        return [state](const ApplicationRow& row) { return row.state != state; };
    };
    const auto asked = std::stable_partition(rows.begin(), rows.end(), isNot(ApplicationState::Ask));
    std::stable_partition(rows.begin(), asked, isNot(ApplicationState::Allow));
    return rows;
}

}  // namespace brennvar
