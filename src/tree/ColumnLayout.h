// Widths of columns side by side, in pixels. Columns that take room share what the others leave of the width, and
// some give way altogether while there is not enough of it for all.
#pragma once

#include <climits>
#include <cstddef>
#include <span>
#include <vector>

namespace brennvar {

class ColumnLayout {
public:
    struct Column {
        int width = 0;
        int minimalWidth = 0;
        bool takesRoom = false;
        // 0: it stays. Where the columns need more than the room, those of the highest number go first, together.
        int yields = 0;
    };
    static constexpr int kNone = -1;

    void Set(std::vector<Column> columns);
    // The width that the columns should fill; they need more when their widths do.
    void Fit(int room);
    // The user drags the divider at the right of a column until the column would have this width. Behind a column
    // that takes room the next one gives way instead, so that they fill the width as before.
    void Drag(int column, int width);
    // The column must not be narrower from now on; it counts with the next Fit.
    void Widen(int column, int minimalWidth);
    // Widths remembered from another time; too few leave the rest as it is.
    void Restore(std::span<const int> widths);

    [[nodiscard]] int Count() const { return static_cast<int>(m_columns.size()); }
    // As it is shown: none, while it gives way.
    [[nodiscard]] int Width(int column) const { return HasGivenWay(At(column)) ? 0 : At(column).width; }
    // As it is when there is room for it.
    [[nodiscard]] int WantedWidth(int column) const { return At(column).width; }
    [[nodiscard]] int Left(int column) const;
    [[nodiscard]] int Total() const { return Left(Count()); }
    // kNone beside all columns.
    [[nodiscard]] int ColumnAt(int x) const;
    // The column whose right divider lies within so many pixels.
    [[nodiscard]] int DividerAt(int x, int reach) const;

private:
    [[nodiscard]] Column& At(int column) { return m_columns[static_cast<std::size_t>(column)]; }
    [[nodiscard]] const Column& At(int column) const { return m_columns[static_cast<std::size_t>(column)]; }
    [[nodiscard]] bool HasGivenWay(const Column& column) const { return column.yields >= m_firstThatYields; }
    // The room that all columns that are shown need at least.
    [[nodiscard]] int LeastTotal() const;
    void ShowWhatFits();

    std::vector<Column> m_columns;
    int m_firstThatYields = INT_MAX;
    int m_room = 0;
};

}  // namespace brennvar
