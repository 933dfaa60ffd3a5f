#include "views/RowOrder.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <utility>

namespace brennvar {
namespace {

std::string Folded(std::string text) {
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

bool HoldsText(int row, int columnCount, const RowText& text, const std::string& searched) {
    for (int column = 0; column < columnCount; ++column) {
        if (Folded(text(row, column)).find(searched) != std::string::npos) return true;
    }
    return false;
}

std::uint64_t NumberOf(const std::string& text) {
    std::uint64_t number = 0;  // what is no number stands first
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// Sorts by keys that are made once for each row.
template <class Key>
void SortBy(std::vector<int>& rows, bool isAscending, const std::function<Key(int)>& keyOf) {
    std::vector<std::pair<Key, int>> keyed;
    keyed.reserve(rows.size());
    for (const int row : rows) keyed.emplace_back(keyOf(row), row);
    std::stable_sort(keyed.begin(), keyed.end(), [isAscending](const auto& left, const auto& right) {
        return isAscending ? left.first < right.first : right.first < left.first;
    });
    std::transform(keyed.begin(), keyed.end(), rows.begin(), [](const auto& entry) { return entry.second; });
}

}  // namespace

std::vector<int> ArrangeRows(int rowCount, int columnCount, const RowText& text, const RowOrder& order) {
    const std::string searched = Folded(order.searched);
    std::vector<int> rows;
    rows.reserve(static_cast<std::size_t>(std::max(rowCount, 0)));
    for (int row = 0; row < rowCount; ++row) {
        if (searched.empty() || HoldsText(row, columnCount, text, searched)) rows.push_back(row);
    }
    if (order.column == RowOrder::kAsRead) return rows;
    if (order.isNumber) {
        SortBy<std::uint64_t>(rows, order.isAscending, [&](int row) { return NumberOf(text(row, order.column)); });
    } else {
        SortBy<std::string>(rows, order.isAscending, [&](int row) { return Folded(text(row, order.column)); });
    }
    return rows;
}

}  // namespace brennvar
