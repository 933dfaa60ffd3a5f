#include "tree/RowSelection.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace brennvar {

bool RowSelection::Click(int row, Keys keys) {
    if (!IsMultiple()) return SelectOnly(row);
    if (keys.shift) return SelectFromAnchor(row, keys.control);
    if (!keys.control) return SelectOnly(row);
    m_rows.Toggle(row);
    m_focused = m_anchor = row;
    return true;
}

bool RowSelection::MoveTo(int row, Keys keys) {
    if (!IsMultiple()) return SelectOnly(row);
    if (keys.shift) return SelectFromAnchor(row, keys.control);
    if (!keys.control) return SelectOnly(row);
    return FocusOnly(row);
}

bool RowSelection::FocusOnly(int row) {
    m_focused = row;
    return false;
}

bool RowSelection::ToggleFocused() {
    if (m_focused < 0) return false;
    if (!IsMultiple()) return SelectOnly(m_focused);
    m_rows.Toggle(m_focused);
    m_anchor = m_focused;
    return true;
}

bool RowSelection::SelectAll(int rowCount) {
    if (!IsMultiple()) return false;
    RowRanges all;
    all.Add(0, rowCount - 1);
    if (m_focused < 0 && rowCount > 0) m_focused = m_anchor = 0;
    return std::exchange(m_rows, all) != all;
}

bool RowSelection::SelectOnly(int row) {
    RowRanges one;
    if (row >= 0) one.Add(row, row);
    m_focused = m_anchor = row;
    return std::exchange(m_rows, one) != one;
}

void RowSelection::Restore(RowRanges rows, int focused) {
    m_rows = std::move(rows);
    m_focused = m_anchor = focused;
}

void RowSelection::MoveRowsBehind(int row, int by) {
    const auto moved = [=](int other) {
        if (other <= row) return other;
        return other + by > row ? other + by : row;
    };
    RowRanges rows;
    for (const RowRanges::Range& range : m_rows.Ranges()) {
        rows.Add(range.first, std::min(range.last, row));
        const int first = std::max({range.first, row + 1, row + 1 - by});
        rows.Add(first + by, range.last + by);
    }
    m_rows = std::move(rows);
    m_focused = moved(m_focused);
    m_anchor = moved(m_anchor);
}

bool RowSelection::CutAt(int rowCount) {
    m_focused = std::min(m_focused, rowCount - 1);
    m_anchor = std::min(m_anchor, rowCount - 1);
    RowRanges rest = m_rows;
    rest.Remove(rowCount, std::numeric_limits<int>::max());
    return std::exchange(m_rows, rest) != rest;
}

bool RowSelection::SelectFromAnchor(int row, bool keepOthers) {
    if (m_anchor < 0) m_anchor = m_focused < 0 ? row : m_focused;
    RowRanges rows;
    if (keepOthers) rows = m_rows;
    rows.Add(std::min(m_anchor, row), std::max(m_anchor, row));
    m_focused = row;
    return std::exchange(m_rows, rows) != rows;
}

}  // namespace brennvar
