// The part of rules/RuleChanges.h that compares advanced rules.
#include <algorithm>
#include <cstring>
#include <map>
#include <span>
#include <utility>

#include "ipc/RecordCipher.h"
#include "rules/RuleChanges.h"

namespace brennvar {
namespace {

using Kind = AdvancedRuleChange::Kind;
// An identifier, and the how many-th rule it is that has it.
using RuleKey = std::pair<std::uint32_t, int>;

struct Rules {
    std::vector<AdvancedRule> list;
    std::vector<RuleKey> keys;
    std::map<RuleKey, std::size_t> places;
    bool isReadable = true;
};

// Nobody types control characters, but for those of white space that are pasted into a description. Bytes under
// another key have some, all but surely.
bool IsTyped(std::string_view text, std::string_view allowed = {}) {
    return std::none_of(text.begin(), text.end(), [allowed](char c) {
        return static_cast<unsigned char>(c) < ' ' && allowed.find(c) == std::string_view::npos;
    });
}

Rules Decode(std::string_view enciphered) {
    std::vector<AdvancedRuleRecord> records(enciphered.size() / sizeof(AdvancedRuleRecord));
    const auto bytes = std::as_writable_bytes(std::span(records));
    if (!records.empty()) std::memcpy(bytes.data(), enciphered.data(), bytes.size());
    CipherRecords(bytes, sizeof(AdvancedRuleRecord));
    Rules rules;
    rules.isReadable = enciphered.size() % sizeof(AdvancedRuleRecord) == 0;
    std::map<std::uint32_t, int> counts;
    for (const AdvancedRuleRecord& record : records) {
        const AdvancedRule rule = DecodeRule(record);
        rules.isReadable =
            rules.isReadable && IsTyped(rule.program) && IsTyped(rule.user) && IsTyped(rule.description, "\t\r\n");
        const RuleKey key(rule.id, counts[rule.id]++);
        rules.places.emplace(key, rules.list.size());
        rules.keys.push_back(key);
        rules.list.push_back(rule);
    }
    return rules;
}

// Which of the numbers are not part of the longest sequence that rises: those that have left their place.
std::vector<bool> OutOfOrder(const std::vector<std::size_t>& numbers) {
    std::vector<std::size_t> ends;                         // of the best sequence of each length: where it ends
    std::vector<std::size_t> previous(numbers.size(), 0);  // in the best sequence that ends here; plus 1
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const auto at =
            std::lower_bound(ends.begin(), ends.end(), numbers[i],
                             [&](std::size_t end, std::size_t number) { return numbers[end] < number; });
        if (at != ends.begin()) previous[i] = *std::prev(at) + 1;
        if (at == ends.end()) {
            ends.push_back(i);
        } else {
            *at = i;
        }
    }
    std::vector<bool> isOut(numbers.size(), true);
    for (std::size_t next = ends.empty() ? 0 : ends.back() + 1; next != 0; next = previous[next - 1]) {
        isOut[next - 1] = false;
    }
    return isOut;
}

}  // namespace

void CompareAdvancedRules(std::string_view before, std::string_view after, ImportPreview& preview) {
    const Rules old = Decode(before);
    const Rules fresh = Decode(after);
    if (!fresh.isReadable) {
        preview.isUnreadable = true;
        return;
    }
    std::vector<AdvancedRuleChange> kept;  // of those that are in both
    std::vector<std::size_t> oldPlaces;
    for (std::size_t i = 0; i < fresh.list.size(); ++i) {
        if (fresh.list[i].isDamaged) ++preview.damaged;
        const auto found = old.places.find(fresh.keys[i]);
        if (found == old.places.end()) {
            preview.advanced.push_back({.kind = Kind::Added, .after = fresh.list[i], .placeAfter = i});
            continue;
        }
        oldPlaces.push_back(found->second);
        kept.push_back({.kind = Kind::Changed,
                        .before = old.list[found->second],
                        .after = fresh.list[i],
                        .placeBefore = found->second,
                        .placeAfter = i});
    }
    preview.added += preview.advanced.size();
    for (std::size_t i = 0; i < old.list.size(); ++i) {
        if (fresh.places.contains(old.keys[i])) continue;
        preview.advanced.push_back({.kind = Kind::Removed, .before = old.list[i], .placeBefore = i});
        ++preview.removed;
    }
    const std::vector<bool> isOut = OutOfOrder(oldPlaces);
    std::vector<AdvancedRuleChange> moved;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        if (kept[i].before != kept[i].after) {
            preview.advanced.push_back(std::move(kept[i]));
            ++preview.changed;
        } else if (isOut[i]) {
            kept[i].kind = Kind::Moved;
            moved.push_back(std::move(kept[i]));
        } else {
            ++preview.unchanged;
        }
    }
    preview.moved = moved.size();
    std::ranges::move(moved, std::back_inserter(preview.advanced));
}

}  // namespace brennvar
