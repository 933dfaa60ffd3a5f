// One change of the advanced rules: what is sent for it, and what becomes of the rules when the service does it.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "commands/Batch.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

struct AdvancedChange {
    UserCommand command = UserCommand::ChangeAdvancedRules;  // one of those of the advanced rules
    std::vector<AdvancedRule> rules{};  // a new one, without identifier; or what becomes of those with theirs
    std::vector<std::uint32_t> ids{};   // of those that go
    std::vector<RuleMove> moves{};
};

[[nodiscard]] Batch BatchOf(const AdvancedChange& change);
// So many commands it takes, without the one that ends it.
[[nodiscard]] int CommandCountOf(const AdvancedChange& change);

// As the service does it. Of several rules with one identifier the first is meant; a new rule comes last.
void Apply(const AdvancedChange& change, std::vector<AdvancedRule>& rules);

// Whether rules that were read have come about by the changes. expected: the rules before, with the changes
// applied. What others have changed meanwhile does not count.
[[nodiscard]] bool AreStored(std::span<const AdvancedChange> changes, const std::vector<AdvancedRule>& expected,
                             const std::vector<AdvancedRule>& read);

}  // namespace brennvar
