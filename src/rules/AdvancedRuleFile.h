// The file of the advanced rules, which the service writes; the interface only reads it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

// In the order of the file, which is the order in which they are asked. A file that is not there has no rules, and
// is not made; a record that is cut at the end is left out, and so is what stands behind kMostListEntries of them.
// Nothing: the file is there but cannot be read. Waits for a file that the service holds, for half a second at most
// (rules/ListFile.h).
[[nodiscard]] std::optional<std::vector<AdvancedRule>> LoadAdvancedRules(const std::string& file, Clock& clock);

}  // namespace brennvar
