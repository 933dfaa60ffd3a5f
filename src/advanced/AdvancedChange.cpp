#include "advanced/AdvancedChange.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace brennvar {
namespace {

using Rules = std::vector<AdvancedRule>;
using Ids = std::unordered_set<std::uint32_t>;

auto Find(Rules& rules, std::uint32_t id) {
    return std::find_if(rules.begin(), rules.end(), [id](const AdvancedRule& rule) { return rule.id == id; });
}

void Move(const RuleMove& move, Rules& rules) {
    const auto rule = Find(rules, move.id);
    if (rule == rules.end()) return;
    const auto room = move.places < 0 ? rule - rules.begin() : rules.end() - rule - 1;
    const auto places = std::min<std::ptrdiff_t>(std::abs(move.places), room);
    if (move.places < 0) {
        std::rotate(rule - places, rule, rule + 1);
    } else {
        std::rotate(rule, rule + 1, rule + 1 + places);
    }
}

Ids IdsOf(const Rules& rules) {
    Ids ids;
    for (const AdvancedRule& rule : rules) ids.insert(rule.id);
    return ids;
}

// The rules whose identifiers are among these, in their order. Not copied: they may be thousands, and are read
// several times while a change is under way.
std::vector<const AdvancedRule*> Only(const Rules& rules, const Ids& ids) {
    std::vector<const AdvancedRule*> some;
    for (const AdvancedRule& rule : rules) {
        if (ids.contains(rule.id)) some.push_back(&rule);
    }
    return some;
}

bool HaveSameOrder(const Rules& expected, const Rules& read) {
    const auto left = Only(expected, IdsOf(read));
    const auto right = Only(read, IdsOf(expected));
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](const AdvancedRule* a, const AdvancedRule* b) { return a->id == b->id; });
}

// But for the identifier.
bool SaysTheSame(const AdvancedRule& read, const AdvancedRule& added) {
    // Cheaply told apart, before one is copied.
    if (read.description != added.description || read.program != added.program) return false;
    AdvancedRule same = read;
    same.id = added.id;
    return same == added;
}

}  // namespace

Batch BatchOf(const AdvancedChange& change) {
    CommandArguments arguments;
    for (const AdvancedRule& rule : change.rules) arguments.rules.push_back(EncodeRule(rule));
    arguments.ruleIds = change.ids;
    arguments.moves = change.moves;
    return Batch(change.command, std::move(arguments));
}

int CommandCountOf(const AdvancedChange& change) {
    int count = static_cast<int>(change.rules.size() + change.ids.size());
    for (const RuleMove& move : change.moves) count += std::abs(move.places);
    return count;
}

void Apply(const AdvancedChange& change, Rules& rules) {
    // In one pass each: they may be thousands.
    std::unordered_map<std::uint32_t, const AdvancedRule*> replaced;
    for (const AdvancedRule& rule : change.rules) {
        if (rule.id != 0) replaced.emplace(rule.id, &rule);
    }
    for (AdvancedRule& rule : rules) {
        const auto found = replaced.find(rule.id);
        if (found == replaced.end()) continue;
        rule = *found->second;
        replaced.erase(found);
    }
    Ids leaving(change.ids.begin(), change.ids.end());
    std::erase_if(rules, [&leaving](const AdvancedRule& rule) { return leaving.erase(rule.id) > 0; });
    for (const RuleMove& move : change.moves) Move(move, rules);
    std::copy_if(change.rules.begin(), change.rules.end(), std::back_inserter(rules),
                 [](const AdvancedRule& rule) { return rule.id == 0; });
}

bool AreStored(std::span<const AdvancedChange> changes, const Rules& expected, const Rules& read) {
    Ids touched;
    bool isMoved = false;
    for (const AdvancedChange& change : changes) {
        for (const AdvancedRule& rule : change.rules) touched.insert(rule.id);
        touched.insert(change.ids.begin(), change.ids.end());
        isMoved = isMoved || !change.moves.empty();
    }
    const bool isAdded = touched.erase(0) > 0;
    // In the same order: several of one identifier are told from one another by it.
    auto left = Only(expected, touched);
    auto right = Only(read, touched);
    const auto byId = [](const AdvancedRule* a, const AdvancedRule* b) { return a->id < b->id; };
    std::stable_sort(left.begin(), left.end(), byId);
    std::stable_sort(right.begin(), right.end(), byId);
    const bool areSame = std::equal(left.begin(), left.end(), right.begin(), right.end(),
                                    [](const AdvancedRule* a, const AdvancedRule* b) { return *a == *b; });
    if (!areSame || (isMoved && !HaveSameOrder(expected, read))) return false;
    if (!isAdded) return true;
    // New rules have identifiers now that nobody had.
    const Ids known = IdsOf(expected);
    return std::all_of(expected.begin(), expected.end(), [&](const AdvancedRule& added) {
        return added.id != 0 || std::any_of(read.begin(), read.end(), [&](const AdvancedRule& rule) {
                   return (rule.id == 0 || !known.contains(rule.id)) && SaysTheSame(rule, added);
               });
    });
}

}  // namespace brennvar
