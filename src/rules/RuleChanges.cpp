#include "rules/RuleChanges.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <span>
#include <unordered_map>

#include "base/AsciiCase.h"
#include "ipc/RecordCipher.h"

namespace brennvar {
namespace {

struct Rule {
    std::string path;
    ApplicationState state;
};
struct Rules {
    std::vector<Rule> list;                               // one for each path, in the order of the file
    std::unordered_map<std::string, std::size_t> places;  // by the path in lower case
    bool isReadable = true;
};

// A path has no control characters. Bytes under another key have some, all but surely: one in eight is one.
bool IsPath(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; });
}

Rules Decode(std::string_view enciphered) {
    std::vector<ApplicationRuleRecord> records(enciphered.size() / sizeof(ApplicationRuleRecord));
    const auto bytes = std::as_writable_bytes(std::span(records));
    if (!records.empty()) std::memcpy(bytes.data(), enciphered.data(), bytes.size());
    CipherRecords(bytes, sizeof(ApplicationRuleRecord));
    Rules rules;
    rules.isReadable = enciphered.size() % sizeof(ApplicationRuleRecord) == 0;
    rules.places.reserve(records.size());
    for (const ApplicationRuleRecord& record : records) {
        const std::string_view path = TextOf(record.path);
        rules.isReadable = rules.isReadable && IsPath(path);
        if (!rules.places.emplace(LowerCase(std::string(path)), rules.list.size()).second) continue;
        rules.list.push_back({std::string(path), StateOfAction(record.action)});
    }
    return rules;
}

}  // namespace

void CompareRules(std::string_view before, std::string_view after, ImportPreview& preview) {
    const Rules old = Decode(before);
    const Rules fresh = Decode(after);
    if (!fresh.isReadable) {
        preview.isUnreadable = true;
        return;
    }
    std::vector<RuleChange> changed;
    for (const Rule& rule : fresh.list) {
        const auto found = old.places.find(LowerCase(rule.path));
        if (found == old.places.end()) {
            preview.rules.push_back({.kind = RuleChange::Kind::Added, .path = rule.path, .after = rule.state});
        } else if (const Rule& was = old.list[found->second]; was.state != rule.state) {
            changed.push_back(
                {.kind = RuleChange::Kind::Changed, .path = rule.path, .before = was.state, .after = rule.state});
        } else {
            ++preview.unchanged;
        }
    }
    const std::size_t added = preview.rules.size();
    preview.added += added;
    for (const Rule& rule : old.list) {
        if (fresh.places.contains(LowerCase(rule.path))) continue;
        preview.rules.push_back({.kind = RuleChange::Kind::Removed, .path = rule.path, .before = rule.state});
    }
    preview.removed += preview.rules.size() - added;
    preview.changed += changed.size();
    std::move(changed.begin(), changed.end(), std::back_inserter(preview.rules));
}

ImportPreview PreviewImport(const ImportPlan& plan, CurrentFiles& current) {
    ImportPreview preview;
    preview.skipped = plan.skipped;
    for (const PlannedFile& file : plan.files) {
        const auto before = current.Content(file.path);
        if (!file.isRemoved && EqualsIgnoringCase(file.path, kApplicationRulesEntry)) {
            CompareRules(before.value_or(std::string()), file.content, preview);
            continue;
        }
        if (!file.isRemoved && EqualsIgnoringCase(file.path, kAdvancedRulesEntry)) {
            CompareAdvancedRules(before.value_or(std::string()), file.content, preview);
            continue;
        }
        preview.files.push_back(
            {.path = file.path,
             .before = before ? std::optional<std::uint64_t>(before->size()) : std::nullopt,
             .after = file.isRemoved ? std::nullopt : std::optional<std::uint64_t>(file.content.size())});
    }
    return preview;
}

}  // namespace brennvar
