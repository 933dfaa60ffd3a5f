// Which advanced rules can never decide, because a rule above them matches whatever they match.
#pragma once

#include <span>
#include <vector>

#include "base/StopSignal.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

inline constexpr int kNotCovered = -1;

// For each rule the place of the first one above that covers it, or kNotCovered. Rules that are off or damaged
// cover nothing and are not covered. Only single rules are compared: one that several cover together is not found.
// 20,000 rules in less than a second; asked to stop it says that the rest is not covered.
[[nodiscard]] std::vector<int> FindCoveredRules(std::span<const AdvancedRule> rules, const StopSignal& stop);

}  // namespace brennvar
