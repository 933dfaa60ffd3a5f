#include "rules/AdvancedRuleFile.h"

#include "rules/ListFile.h"

namespace brennvar {

std::optional<std::vector<AdvancedRule>> LoadAdvancedRules(const std::string& file, Clock& clock) {
    std::vector<AdvancedRule> rules;
    const bool isRead = ReadListRecords<AdvancedRuleRecord>(
        file, clock, rules, [&rules](const AdvancedRuleRecord& record) { rules.push_back(DecodeRule(record)); });
    return isRead ? std::optional(std::move(rules)) : std::nullopt;
}

}  // namespace brennvar
