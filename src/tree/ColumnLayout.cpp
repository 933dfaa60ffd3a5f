#include "tree/ColumnLayout.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <utility>

namespace brennvar {

void ColumnLayout::Set(std::vector<Column> columns) {
    m_columns = std::move(columns);
    for (Column& column : m_columns) column.width = std::max(column.width, column.minimalWidth);
    Fit(m_room);
}

int ColumnLayout::LeastTotal() const {
    int total = 0;
    for (const Column& column : m_columns) {
        if (!HasGivenWay(column)) total += column.takesRoom ? column.minimalWidth : column.width;
    }
    return total;
}

void ColumnLayout::ShowWhatFits() {
    m_firstThatYields = INT_MAX;
    while (LeastTotal() > m_room) {
        int next = 0;
        for (const Column& column : m_columns) {
            if (!HasGivenWay(column)) next = std::max(next, column.yields);
        }
        if (next == 0) return;
        m_firstThatYields = next;
    }
}

void ColumnLayout::Fit(int room) {
    m_room = room;
    ShowWhatFits();
    int rest = room;
    int takers = 0;
    for (const Column& column : m_columns) {
        if (HasGivenWay(column)) continue;
        if (column.takesRoom) {
            ++takers;
        } else {
            rest -= column.width;
        }
    }
    for (Column& column : m_columns) {
        if (!column.takesRoom || HasGivenWay(column)) continue;
        column.width = std::max(column.minimalWidth, rest / takers);
        rest -= column.width;
        --takers;
    }
}

void ColumnLayout::Drag(int column, int width) {
    if (!At(column).takesRoom) {
        At(column).width = std::max(At(column).minimalWidth, width);
    } else if (column + 1 < Count() && !At(column + 1).takesRoom) {
        Column& next = At(column + 1);
        const int wanted = next.width - (width - At(column).width);
        // The room is only there while the taker is wider than it must be.
        const int most = std::max(next.width, next.width + At(column).width - At(column).minimalWidth);
        next.width = std::clamp(wanted, next.minimalWidth, std::max(next.minimalWidth, most));
    }
    Fit(m_room);
}

void ColumnLayout::Widen(int column, int minimalWidth) {
    At(column).minimalWidth = std::max(At(column).minimalWidth, minimalWidth);
    At(column).width = std::max(At(column).width, minimalWidth);
}

void ColumnLayout::Restore(std::span<const int> widths) {
    for (std::size_t i = 0; i < std::min(widths.size(), m_columns.size()); ++i) {
        m_columns[i].width = std::max(m_columns[i].minimalWidth, widths[i]);
    }
    Fit(m_room);
}

int ColumnLayout::Left(int column) const {
    int left = 0;
    for (int i = 0; i < column; ++i) left += Width(i);
    return left;
}

int ColumnLayout::ColumnAt(int x) const {
    int left = 0;
    for (int i = 0; i < Count(); ++i) {
        if (x >= left && x < left + Width(i)) return i;
        left += Width(i);
    }
    return kNone;
}

int ColumnLayout::DividerAt(int x, int reach) const {
    // From the right: of columns dragged to nothing the last one is found, which can be opened again.
    // One that gives way cannot.
    for (int i = Count() - 1; i >= 0; --i) {
        if (!HasGivenWay(At(i)) && std::abs(x - Left(i + 1)) <= reach) return i;
    }
    return kNone;
}

}  // namespace brennvar
