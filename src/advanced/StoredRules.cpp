#include "advanced/StoredRules.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>

namespace brennvar {
namespace {

std::string KeyText(std::uint32_t id, std::ptrdiff_t ordinal) {
    std::string key = std::to_string(id);
    if (ordinal > 0) key += '#' + std::to_string(ordinal);
    return key;
}

}  // namespace

StoredRules::StoredRules(std::vector<AdvancedRule> rules, bool isReadable)
    : m_rules(std::move(rules)), m_isReadable(isReadable) {
    std::unordered_map<std::uint32_t, int> seen;
    seen.reserve(m_rules.size());
    m_ordinals.reserve(m_rules.size());
    for (const AdvancedRule& rule : m_rules) m_ordinals.push_back(seen[rule.id]++);
}

int StoredRules::Find(std::uint32_t id) const {
    if (id == 0) return -1;
    const auto found =
        std::find_if(m_rules.begin(), m_rules.end(), [id](const AdvancedRule& rule) { return rule.id == id; });
    return found == m_rules.end() ? -1 : static_cast<int>(found - m_rules.begin());
}

std::string StoredRules::KeyOf(int row) const {
    return KeyText(Rule(row).id, OrdinalOf(row));
}

std::string KeyOfRule(std::span<const AdvancedRule> rules, std::size_t row) {
    const std::uint32_t id = rules[row].id;
    const auto ordinal = std::count_if(rules.begin(), rules.begin() + static_cast<std::ptrdiff_t>(row),
                                       [id](const AdvancedRule& rule) { return rule.id == id; });
    return KeyText(id, ordinal);
}

}  // namespace brennvar
