// What an import would change, told before it does: rule by rule for the application and the advanced rules, by
// name and size for all other files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "rules/AdvancedRule.h"
#include "rules/ApplicationRules.h"
#include "rules/ImportPlan.h"

namespace brennvar {

struct RuleChange {
    enum class Kind : std::uint8_t { Added, Removed, Changed };
    Kind kind{};
    std::string path;           // of the program
    ApplicationState before{};  // not of an added one
    ApplicationState after{};   // not of a removed one
    friend bool operator==(const RuleChange&, const RuleChange&) = default;
};

// Of an advanced rule. One that changes and moves as well has changed.
struct AdvancedRuleChange {
    enum class Kind : std::uint8_t { Added, Removed, Changed, Moved };
    Kind kind{};
    std::optional<AdvancedRule> before{};  // not of an added one
    std::optional<AdvancedRule> after{};   // not of a removed one
    std::size_t placeBefore = 0;           // from 0, in the order of decision
    std::size_t placeAfter = 0;
    friend bool operator==(const AdvancedRuleChange&, const AdvancedRuleChange&) = default;
};

struct FileChange {
    std::string path;                     // below the folder
    std::optional<std::uint64_t> before;  // bytes; nothing: it is not there
    std::optional<std::uint64_t> after;   // nothing: it goes
    friend bool operator==(const FileChange&, const FileChange&) = default;
};

struct ImportPreview {
    std::vector<RuleChange> rules{};             // added, removed, changed, each in the order of its file
    std::vector<AdvancedRuleChange> advanced{};  // added, removed, changed, moved, each in the order of its file
    // Of both kinds of rules.
    std::size_t added = 0;
    std::size_t removed = 0;
    std::size_t changed = 0;
    std::size_t moved = 0;
    std::size_t unchanged = 0;
    std::size_t damaged = 0;  // advanced rules of the archive that never match
    // The rules of the archive are no rules here: damaged, or those of an installation with another
    // key.
    bool isUnreadable = false;
    std::vector<FileChange> files{};  // all but the rules
    std::size_t skipped = 0;          // see ImportPlan
};

// The rules of one enciphered file against those of another. Of several records for a path the first one counts.
// Paths are compared as LookupApplicationAction does.
void CompareRules(std::string_view before, std::string_view after, ImportPreview& preview);

// Likewise for advanced rules, which are the same when they have the same identifier; of several with one the first
// is compared with the first, and so on. As few as possible count as moved.
void CompareAdvancedRules(std::string_view before, std::string_view after, ImportPreview& preview);

// What the file of a planned path holds now; nothing when it is not there. Called once for each file.
class CurrentFiles {
public:
    virtual ~CurrentFiles() = default;
    [[nodiscard]] virtual std::optional<std::string> Content(const std::string& path) = 0;
};
[[nodiscard]] ImportPreview PreviewImport(const ImportPlan& plan, CurrentFiles& current);

}  // namespace brennvar
