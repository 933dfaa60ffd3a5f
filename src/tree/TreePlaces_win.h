// Where everything of a tree stands: header, columns, rows, cells and their parts, and the scroll bars with what is
// scrolled to. Arithmetic only: nothing is painted and nobody is told. Places are in client coordinates.
#pragma once

#include <algorithm>
#include <optional>
#include <span>
#include <vector>

#include "controls/ScrollBar_win.h"
#include "tree/ColumnLayout.h"
#include "tree/TreePainter_win.h"
#include "tree/TreeSource_win.h"

namespace brennvar {

struct CellId {
    int row = -1;
    int column = -1;
    friend bool operator==(const CellId&, const CellId&) = default;
};

class TreePlaces {
public:
    static constexpr int kFrame = 2;            // pixels around everything, one of each frame colour
    static constexpr int kWidestText = 10'000;  // pixels; no cell needs more

    // Borrows the rows, to find out which parts a cell has.
    explicit TreePlaces(const TreeSource& source) : m_source(source) {}

    void SetColumns(std::span<const TreeColumn> columns, bool hasLevels);
    void SetHasLevels(bool hasLevels) { m_hasLevels = hasLevels; }
    [[nodiscard]] bool HasLevels() const { return m_hasLevels; }
    // For a client area and so many rows. What is scrolled to stays as far as there is so much.
    void LayOut(const RECT& client, int rowCount);
    // So many rows have come directly behind this one, or have gone from there: what is in sight goes with them.
    void MoveRowsBehind(int row, int by);

    [[nodiscard]] ColumnLayout& Columns() { return m_layout; }
    [[nodiscard]] const ColumnLayout& Columns() const { return m_layout; }
    [[nodiscard]] const TreeColumn& Column(int column) const { return m_columns[static_cast<std::size_t>(column)]; }
    // True for the column in which room is kept for expand marks.
    [[nodiscard]] bool KeepsExpander(int column) const { return m_hasLevels && column == 0; }
    // Asked of the owner only when rows can differ.
    [[nodiscard]] TreeRow LevelOf(int row) const { return m_hasLevels ? m_source.Row(row) : TreeRow{}; }

    [[nodiscard]] CScrollBar& Vertical() { return m_vertical; }  // rows
    [[nodiscard]] const CScrollBar& Vertical() const { return m_vertical; }
    [[nodiscard]] CScrollBar& Horizontal() { return m_horizontal; }  // pixels
    [[nodiscard]] const CScrollBar& Horizontal() const { return m_horizontal; }

    [[nodiscard]] int RowCount() const { return m_rowCount; }  // when it was last laid out
    [[nodiscard]] int FirstRow() const { return m_vertical.Range().position; }
    [[nodiscard]] int PageRows() const { return m_vertical.Range().page; }
    // Behind the last row of which something is seen. Sums stay below the largest number of rows there can be.
    [[nodiscard]] int SeenEnd() const { return FirstRow() + std::min(m_rowCount - FirstRow(), PageRows() + 1); }

    [[nodiscard]] const RECT& Header() const { return m_header; }
    [[nodiscard]] const RECT& Rows() const { return m_rows; }
    [[nodiscard]] const RECT& Corner() const { return m_corner; }  // between both bars
    [[nodiscard]] RECT Row(int row) const;                         // also of rows out of sight
    [[nodiscard]] RECT WholeCell(CellId cell) const;               // also of cells out of sight
    [[nodiscard]] RECT SeenCell(CellId cell) const;                // empty when nothing of it is seen
    [[nodiscard]] RECT HeaderCell(int column) const;
    [[nodiscard]] CellPlaces PartsOf(CellId cell) const;

    [[nodiscard]] int RowAt(POINT point) const;  // -1: none
    [[nodiscard]] std::optional<CellId> CellAt(POINT point) const;
    // True for a place on the check box of this cell.
    [[nodiscard]] bool IsOnCheck(CellId cell, POINT point) const;
    [[nodiscard]] int ColumnAt(POINT point) const { return m_layout.ColumnAt(Along(point)); }
    // The column whose right divider can be taken hold of here; ColumnLayout::kNone beside them.
    [[nodiscard]] int DividerAt(POINT point) const;
    // From the left edge of the first column, wherever that is scrolled to.
    [[nodiscard]] int Along(POINT point) const { return point.x - m_rows.left + m_horizontal.Range().position; }

private:
    void LayOutBars(const RECT& inner);

    const TreeSource& m_source;
    std::vector<TreeColumn> m_columns;
    ColumnLayout m_layout;
    bool m_hasLevels = false;
    int m_rowCount = 0;
    RECT m_header{};
    RECT m_rows{};
    RECT m_corner{};
    CScrollBar m_vertical{true};
    CScrollBar m_horizontal{false};
};

}  // namespace brennvar
