// The texts of the list of advanced rules: those of its cells, and those of all of them together as a search wants
// them.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/StopSignal.h"
#include "config/Language.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

enum class RuleColumn { Number, Action, What, Local, Remote, Program, When, Description };
inline constexpr int kRuleColumnCount = static_cast<int>(RuleColumn::Description) + 1;

// row: the rule's place in the list, from 0; isCovered: it never decides, because a rule above it does.
[[nodiscard]] std::string RuleCellText(const Language& language, const AdvancedRule& rule, int row, bool isCovered,
                                       RuleColumn column);

// The cells of each rule in one text, in lower case. Making a cell's text takes so much longer than looking through
// it that a search in 20,000 rules would keep the user waiting at every key. About 70 bytes for a rule.
class RuleTexts {
public:
    RuleTexts() = default;
    // covered: as FindCoveredRules has found them. Asked to stop, it makes none. Any thread.
    RuleTexts(const Language& language, std::span<const AdvancedRule> rules, std::span<const int> covered,
              const StopSignal& stop);

    // None have been made.
    [[nodiscard]] bool IsEmpty() const { return m_ends.empty(); }
    // Between the texts of two cells stands a zero, which no search holds.
    [[nodiscard]] std::string_view Of(int row) const;

private:
    std::string m_texts;  // in one piece: strings of their own would take several times the memory
    std::vector<std::size_t> m_ends;
};

}  // namespace brennvar
