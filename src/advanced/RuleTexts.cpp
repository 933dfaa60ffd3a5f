#include "advanced/RuleTexts.h"

#include <algorithm>

#include "base/AsciiCase.h"
#include "rules/CoveredRules.h"
#include "rules/RuleSentence.h"

namespace brennvar {
namespace {

std::string ActionCellText(const Language& language, const AdvancedRule& rule, bool isCovered) {
    if (rule.isDamaged) return language.GetText(2085, "Damaged");
    std::string text = ActionText(language, rule.action);
    return isCovered ? FillText(language.GetText(2086, "%1, covered"), {text}) : text;
}

}  // namespace

std::string RuleCellText(const Language& language, const AdvancedRule& rule, int row, bool isCovered,
                         RuleColumn column) {
    switch (column) {
        case RuleColumn::Number: return std::to_string(row + 1);
        case RuleColumn::Action: return ActionCellText(language, rule, isCovered);
        case RuleColumn::What: return WhatText(language, rule);
        case RuleColumn::Local: return EndText(language, rule.local, rule.protocol);
        case RuleColumn::Remote: return EndText(language, rule.remote, rule.protocol);
        case RuleColumn::Program: return ProgramText(language, rule);
        case RuleColumn::When: return WhenText(language, rule);
        default: return rule.description;
    }
}

RuleTexts::RuleTexts(const Language& language, std::span<const AdvancedRule> rules, std::span<const int> covered,
                     const StopSignal& stop) {
    m_ends.reserve(rules.size());
    for (std::size_t at = 0; at < rules.size() && !stop.Requested(); ++at) {
        const bool isCovered = covered[at] != kNotCovered;
        for (int column = 0; column < kRuleColumnCount; ++column) {
            m_texts +=
                RuleCellText(language, rules[at], static_cast<int>(at), isCovered, static_cast<RuleColumn>(column));
            m_texts += '\0';
        }
        m_ends.push_back(m_texts.size());
    }
    if (m_ends.size() < rules.size()) m_ends.clear();
    std::transform(m_texts.begin(), m_texts.end(), m_texts.begin(), &AsciiLower);
    m_texts.shrink_to_fit();
}

std::string_view RuleTexts::Of(int row) const {
    const auto at = static_cast<std::size_t>(row);
    const std::size_t start = at == 0 ? 0 : m_ends[at - 1];
    return std::string_view(m_texts).substr(start, m_ends[at] - start);
}

}  // namespace brennvar
