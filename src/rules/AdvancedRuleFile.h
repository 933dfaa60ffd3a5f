// The file of the advanced rules, which the service writes; the interface only reads it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/Clock.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

// As many rules as are read of one file; what stands behind them is left out. Far above what a service would keep,
// so that a file of gigabytes does not fill the memory.
inline constexpr std::size_t kMostAdvancedRules = 100'000;

// In the order of the file, which is the order in which they are asked. A file that is not there has no rules, and
// a record that is cut at the end is left out. Nothing: the file is there but cannot be read. May wait for a file
// that the service holds, as RecordFile::OpenShared does.
[[nodiscard]] std::optional<std::vector<AdvancedRule>> LoadAdvancedRules(const std::string& file, Clock& clock);

}  // namespace brennvar
