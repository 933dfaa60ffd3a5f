#include "views/ApplicationList.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace brennvar {

Text NameOfState(ApplicationState state) {
    switch (state) {
        case ApplicationState::Deny: return Text{1, "Deny"};
        case ApplicationState::Allow: return Text{2, "Allow"};
        default: return Text{3, "Ask"};
    }
}

Tone ToneOfState(ApplicationState state) {
    switch (state) {
        case ApplicationState::Deny: return Tone::Deny;
        case ApplicationState::Allow: return Tone::Allow;
        default: return Tone::Ask;
    }
}

ApplicationState NextState(ApplicationState state) {
    switch (state) {
        case ApplicationState::Deny: return ApplicationState::Ask;
        case ApplicationState::Allow: return ApplicationState::Deny;
        default: return ApplicationState::Allow;
    }
}

RuleCommandAction CommandActionOf(ApplicationState state) {
    switch (state) {
        case ApplicationState::Deny: return RuleCommandAction::Deny;
        case ApplicationState::Allow: return RuleCommandAction::Allow;
        default: return RuleCommandAction::Ask;
    }
}

const ApplicationList::UnderWay* ApplicationList::ChangeOf(int row) const {
    if (m_changes.empty()) return nullptr;
    const auto found = m_changes.find(Row(row).path);
    return found == m_changes.end() ? nullptr : &found->second;
}

ApplicationState ApplicationList::StateOf(int row) const {
    const UnderWay* const change = ChangeOf(row);
    if (!change) return Row(row).state;
    switch (change->action) {
        case RuleCommandAction::Deny: return ApplicationState::Deny;
        case RuleCommandAction::Allow: return ApplicationState::Allow;
        case RuleCommandAction::Ask: return ApplicationState::Ask;
        default: return Row(row).state;
    }
}

bool ApplicationList::IsLeaving(int row) const {
    const UnderWay* const change = ChangeOf(row);
    return change && change->action == RuleCommandAction::Remove;
}

void ApplicationList::Change(int row, RuleCommandAction action, std::uint64_t number) {
    m_changes.insert_or_assign(Row(row).path, UnderWay{.action = action, .number = number});
}

bool ApplicationList::Take(std::vector<ApplicationRow> rows, std::uint64_t over, Order order) {
    std::erase_if(m_changes, [over](const auto& change) { return change.second.number <= over; });
    if (order == Order::Kept) KeepOrder(rows);
    const bool isSame = std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(),
                                   [](const auto& a, const auto& b) { return a.path == b.path; });
    m_rows = std::move(rows);
    return !isSame;
}

void ApplicationList::KeepOrder(std::vector<ApplicationRow>& rows) const {
    // The place that each row had; rows of the same path take their places one after the other.
    std::unordered_multimap<std::string_view, std::size_t> places;
    places.reserve(m_rows.size());
    for (std::size_t row = m_rows.size(); row-- > 0;) places.emplace(m_rows[row].path, row);
    std::vector<std::pair<std::size_t, std::size_t>> order;  // place, row as read
    order.reserve(rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const auto [first, last] = places.equal_range(rows[row].path);
        std::size_t place = m_rows.size();
        if (first != last) {
            const auto lowest = std::min_element(
                first, last, [](const auto& left, const auto& right) { return left.second < right.second; });
            place = lowest->second;
            places.erase(lowest);
        }
        order.emplace_back(place, row);
    }
    std::sort(order.begin(), order.end());
    std::vector<ApplicationRow> kept;
    kept.reserve(rows.size());
    for (const auto& entry : order) kept.push_back(std::move(rows[entry.second]));
    rows = std::move(kept);
}

}  // namespace brennvar
