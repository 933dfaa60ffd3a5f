#include "lists/RowOrder.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <string_view>
#include <utility>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

void Fold(std::string& text) {
    std::transform(text.begin(), text.end(), text.begin(), &AsciiLower);
}

// searched: in lower case.
bool Holds(const ListRows& source, int row, int columnCount, const std::string& searched) {
    if (const auto texts = source.SearchedText(row)) return texts->find(searched) != std::string_view::npos;
    for (int column = 0; column < columnCount; ++column) {
        std::string text = source.CellText(row, column);
        Fold(text);
        if (text.find(searched) != std::string::npos) return true;
    }
    return false;
}

std::vector<int> AllRows(int count) {
    std::vector<int> rows(static_cast<std::size_t>(count));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

// Sorts by keys that are made once for each row.
template <class KeyOf>
void SortBy(std::vector<int>& rows, bool isAscending, const KeyOf& keyOf) {
    std::vector<std::pair<decltype(keyOf(0)), int>> keyed;
    keyed.reserve(rows.size());
    for (const int row : rows) keyed.emplace_back(keyOf(row), row);
    std::stable_sort(keyed.begin(), keyed.end(), [isAscending](const auto& left, const auto& right) {
        return isAscending ? left.first < right.first : right.first < left.first;
    });
    std::transform(keyed.begin(), keyed.end(), rows.begin(), [](const auto& entry) { return entry.second; });
}

// rows: all of them, in the order of the source.
void SortByText(std::vector<int>& rows, const ListRows& source, const RowOrder& order) {
    // In one piece: strings of their own would take several times the memory.
    std::string texts;
    std::vector<std::size_t> ends;
    ends.reserve(rows.size());
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        texts += source.CellText(row, order.column);
        ends.push_back(texts.size());
    }
    Fold(texts);
    SortBy(rows, order.isAscending, [&](int row) {
        const auto at = static_cast<std::size_t>(row);
        const std::size_t start = at == 0 ? 0 : ends[at - 1];
        return std::string_view(texts).substr(start, ends[at] - start);
    });
}

}  // namespace

void RowArranger::Forget() {
    m_sorted.clear();
    m_found.clear();
    m_foundBy.clear();
}

std::vector<int> RowArranger::Arrange(const ListRows& source, int columnCount, const RowOrder& order) {
    const int rowCount = std::max(source.RowCount(), 0);
    if (std::exchange(m_rowCount, rowCount) != rowCount) Forget();
    const bool isSorted = order.column != RowOrder::kAsRead;
    if (isSorted) Sort(source, order);
    if (order.searched.empty()) return isSorted ? m_sorted : AllRows(rowCount);
    Search(source, columnCount, order.searched);
    if (!isSorted) return m_found;
    std::vector<bool> isFound(static_cast<std::size_t>(rowCount));
    for (const int row : m_found) isFound[static_cast<std::size_t>(row)] = true;
    std::vector<int> rows = m_sorted;
    std::erase_if(rows, [&](int row) { return !isFound[static_cast<std::size_t>(row)]; });
    return rows;
}

void RowArranger::Sort(const ListRows& source, const RowOrder& order) {
    if (!m_sorted.empty() && m_sortedBy.column == order.column && m_sortedBy.isAscending == order.isAscending)
        return;
    m_sorted.clear();  // until it is done
    std::vector<int> rows = AllRows(m_rowCount);
    if (order.isNumber) {
        SortBy(rows, order.isAscending, [&](int row) { return source.SortNumber(row, order.column); });
    } else {
        SortByText(rows, source, order);
    }
    m_sorted = std::move(rows);
    m_sortedBy = order;
}

void RowArranger::Search(const ListRows& source, int columnCount, const std::string& text) {
    std::string searched = text;
    Fold(searched);
    // Another letter of the same word: what did not hold the shorter one does not hold the longer.
    const bool isNarrower = !m_foundBy.empty() && searched.find(m_foundBy) != std::string::npos;
    if (isNarrower && searched == m_foundBy) return;
    std::vector<int> found = isNarrower ? m_found : AllRows(m_rowCount);
    std::erase_if(found, [&](int row) { return !Holds(source, row, columnCount, searched); });
    // Only now: without memory for a text it would be a half of both.
    m_found = std::move(found);
    m_foundBy = std::move(searched);
}

}  // namespace brennvar
