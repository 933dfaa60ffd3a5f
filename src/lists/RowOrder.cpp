#include "lists/RowOrder.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <utility>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

void FoldFrom(std::string& text, std::size_t start) {
    std::transform(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(),
                   text.begin() + static_cast<std::ptrdiff_t>(start), &AsciiLower);
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

}  // namespace

void RowArranger::Forget() {
    m_isPrepared = false;
    m_sorted.clear();
}

std::vector<int> RowArranger::Arrange(const ListRows& source, int columnCount, const RowOrder& order) {
    std::vector<int> rows(static_cast<std::size_t>(std::max(source.RowCount(), 0)));
    std::iota(rows.begin(), rows.end(), 0);
    const bool isSorted = order.column != RowOrder::kAsRead;
    if (rows.empty() || (!isSorted && order.searched.empty())) return rows;
    Prepare(source, columnCount);
    if (isSorted) {
        Sort(source, order);
        rows = m_sorted;
    }
    if (!order.searched.empty()) {
        std::string searched = order.searched;
        FoldFrom(searched, 0);
        const std::vector<bool> found = Search(searched);
        std::erase_if(rows, [&](int row) { return !found[static_cast<std::size_t>(row)]; });
    }
    return rows;
}

void RowArranger::Prepare(const ListRows& source, int columnCount) {
    const int rowCount = source.RowCount();
    if (m_isPrepared && m_rowCount == rowCount) return;
    Forget();
    m_rowCount = rowCount;
    m_columnCount = static_cast<std::size_t>(columnCount);
    m_texts.clear();
    m_starts.clear();
    m_starts.reserve(static_cast<std::size_t>(rowCount) * m_columnCount + 1);
    for (int row = 0; row < rowCount; ++row) {
        for (int column = 0; column < columnCount; ++column) {
            m_starts.push_back(m_texts.size());
            m_texts += source.CellText(row, column);
            m_texts += '\0';  // which nobody can type: a find does not reach from one cell into the next
        }
    }
    m_starts.push_back(m_texts.size());
    FoldFrom(m_texts, 0);
    m_isPrepared = true;
}

std::string_view RowArranger::Cell(int row, int column) const {
    const std::size_t start = CellStart(row, column);
    return std::string_view(m_texts).substr(start, CellStart(row, column + 1) - 1 - start);
}

void RowArranger::Sort(const ListRows& source, const RowOrder& order) {
    if (!m_sorted.empty() && m_sortedBy.column == order.column && m_sortedBy.isAscending == order.isAscending)
        return;
    m_sortedBy = order;
    m_sorted.resize(static_cast<std::size_t>(m_rowCount));
    std::iota(m_sorted.begin(), m_sorted.end(), 0);
    if (order.isNumber) {
        SortBy(m_sorted, order.isAscending, [&](int row) { return source.SortNumber(row, order.column); });
    } else {
        SortBy(m_sorted, order.isAscending, [&](int row) { return Cell(row, order.column); });
    }
}

std::vector<bool> RowArranger::Search(const std::string& searched) const {
    std::vector<bool> found(static_cast<std::size_t>(m_rowCount));
    int row = 0;
    for (std::size_t at = m_texts.find(searched); at != std::string::npos;
         at = m_texts.find(searched, CellStart(row, 0))) {
        while (CellStart(row + 1, 0) <= at) ++row;
        found[static_cast<std::size_t>(row)] = true;
        if (++row == m_rowCount) break;
    }
    return found;
}

}  // namespace brennvar
