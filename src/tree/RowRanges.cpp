#include "tree/RowRanges.h"

#include <algorithm>

namespace brennvar {

void RowRanges::Add(int first, int last) {
    if (last < first) return;
    // Everything that overlaps or touches the new range becomes part of it. Rows are far below INT_MAX.
    const auto begin = std::lower_bound(m_ranges.begin(), m_ranges.end(), first,
                                        [](const Range& range, int row) { return range.last + 1 < row; });
    auto end = begin;
    for (; end != m_ranges.end() && end->first <= last + 1; ++end) {
        first = std::min(first, end->first);
        last = std::max(last, end->last);
    }
    m_ranges.insert(m_ranges.erase(begin, end), Range{first, last});
}

void RowRanges::Remove(int first, int last) {
    if (last < first) return;
    std::vector<Range> rest;
    rest.reserve(m_ranges.size() + 1);
    for (const Range& range : m_ranges) {
        if (range.last < first || range.first > last) {
            rest.push_back(range);
            continue;
        }
        if (range.first < first) rest.push_back({range.first, first - 1});
        if (range.last > last) rest.push_back({last + 1, range.last});
    }
    m_ranges = std::move(rest);
}

void RowRanges::Toggle(int row) {
    if (Contains(row)) {
        Remove(row, row);
    } else {
        Add(row, row);
    }
}

bool RowRanges::Contains(int row) const {
    const auto range = std::lower_bound(m_ranges.begin(), m_ranges.end(), row,
                                        [](const Range& candidate, int value) { return candidate.last < value; });
    return range != m_ranges.end() && range->first <= row;
}

std::int64_t RowRanges::Count() const {
    std::int64_t count = 0;
    for (const Range& range : m_ranges) count += std::int64_t{range.last} - range.first + 1;
    return count;
}

}  // namespace brennvar
