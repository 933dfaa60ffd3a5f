// The sets of rules that are exported and imported, each from its own page.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "commands/CommandTable.h"
#include "rules/ImportPlan.h"

namespace brennvar {

enum class RuleSet : std::uint8_t { Applications, Advanced };

struct RuleSetInfo {
    const char* name;        // suggested for an archive, without its extension
    std::string_view entry;  // of the archive, and the file in the folder
    UserCommand import;      // guards an import, and makes the service read the rules again
};

inline constexpr std::array<RuleSetInfo, 2> kRuleSets = {
    {{"rules", kApplicationRulesEntry, UserCommand::ImportApplicationRules},
     {"rules_advanced", kAdvancedRulesEntry, UserCommand::ImportAdvancedRules}}};

[[nodiscard]] constexpr const RuleSetInfo& InfoOf(RuleSet set) {
    return kRuleSets[static_cast<std::size_t>(set)];
}

inline constexpr std::string_view kArchiveExtension = ".fxz";

}  // namespace brennvar
