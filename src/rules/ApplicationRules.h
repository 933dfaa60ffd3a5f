// The application rules file: what the service has decided for each program file. The interface only reads it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Clock.h"
#include "ipc/RecordFile.h"
#include "rules/ApplicationRuleRecord.h"

namespace brennvar {

// Opens the rules file, which the service writes: RecordFile::OpenShared says how, and when there is none. Its
// records are enciphered, always.
[[nodiscard]] std::optional<RecordFile> RulesFileOpen(const std::string& rulesFile, Clock& clock);

// The action of the first rule for this path, whatever its number; Ask when the path is empty, the file cannot be
// read or no rule matches. Paths are compared without regard to the case of ASCII letters. May wait for the file
// as RulesFileOpen does.
[[nodiscard]] RuleAction LookupApplicationAction(const std::string& rulesFile, Clock& clock, std::string_view path);

// How the Applications view codes an action; the file's coding is another one.
enum class ApplicationState : std::uint32_t { Deny = 0, Allow = 1, Ask = 2 };
// Of an action of the file; Ask for every one that is not known.
[[nodiscard]] ApplicationState StateOfAction(RuleAction action);

// One row of the Applications view.
struct ApplicationRow {
    std::string name;  // the path's file name
    std::string path;
    ApplicationState state;
    friend bool operator==(const ApplicationRow&, const ApplicationRow&) = default;
};

// One row per rule: the denied ones, the allowed ones, then the rest, each group in the order of the file. Empty
// when the file cannot be read.
[[nodiscard]] std::vector<ApplicationRow> LoadApplicationRules(const std::string& rulesFile, Clock& clock);

}  // namespace brennvar
