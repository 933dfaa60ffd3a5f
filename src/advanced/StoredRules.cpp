#include "advanced/StoredRules.h"

#include <algorithm>
#include <cstddef>

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
    // Sorted, and not counted in a map, whose nodes take several times the memory.
    std::vector<std::pair<std::uint32_t, std::size_t>> ids;
    ids.reserve(m_rules.size());
    for (std::size_t row = 0; row < m_rules.size(); ++row) ids.emplace_back(m_rules[row].id, row);
    std::sort(ids.begin(), ids.end());
    m_ordinals.resize(m_rules.size());
    for (std::size_t i = 1; i < ids.size(); ++i) {
        const auto& [id, row] = ids[i];
        if (ids[i - 1].first == id) m_ordinals[row] = m_ordinals[ids[i - 1].second] + 1;
    }
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
