// The advanced rules of one reading, or as they will be when the changes under way have been stored. Never changes
// once it is shared.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "rules/AdvancedRule.h"

namespace brennvar {

class StoredRules {
public:
    // isReadable: else the file is there and could not be read, and no rules are known.
    explicit StoredRules(std::vector<AdvancedRule> rules, bool isReadable = true);

    [[nodiscard]] bool IsReadable() const { return m_isReadable; }
    // In the order in which they are asked.
    [[nodiscard]] const std::vector<AdvancedRule>& Rules() const { return m_rules; }
    [[nodiscard]] int Count() const { return static_cast<int>(m_rules.size()); }
    [[nodiscard]] const AdvancedRule& Rule(int row) const { return m_rules[static_cast<std::size_t>(row)]; }

    // Whether a command can say which rule is meant: it has an identifier, and none above it has the same.
    [[nodiscard]] bool HasName(int row) const { return Rule(row).id != 0 && OrdinalOf(row) == 0; }
    // The rule that a command with this identifier means; -1: none.
    [[nodiscard]] int Find(std::uint32_t id) const;
    // What makes a rule the same one in the next reading: "3", and "3#1" for the second with this identifier.
    [[nodiscard]] std::string KeyOf(int row) const;

private:
    // So many rules above it have the same identifier.
    [[nodiscard]] int OrdinalOf(int row) const { return m_ordinals[static_cast<std::size_t>(row)]; }

    std::vector<AdvancedRule> m_rules;
    std::vector<int> m_ordinals;
    bool m_isReadable;
};

// The same for one of rules that are not counted: goes through those before it.
[[nodiscard]] std::string KeyOfRule(std::span<const AdvancedRule> rules, std::size_t row);

}  // namespace brennvar
