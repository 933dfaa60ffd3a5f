#include "tree/TreePlaces_win.h"

#include <utility>

#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kDividerReach = 4;  // pixels at 96 per inch, on both sides

}  // namespace

void TreePlaces::SetColumns(std::span<const TreeColumn> columns, bool hasLevels) {
    m_columns.assign(columns.begin(), columns.end());
    m_hasLevels = hasLevels;
    std::vector<ColumnLayout::Column> widths;
    for (const TreeColumn& column : m_columns) {
        widths.push_back({Scale(column.width), Scale(column.minimalWidth), column.takesRoom, column.yields});
    }
    m_layout.Set(std::move(widths));
}

void TreePlaces::LayOut(const RECT& client, int rowCount) {
    m_rowCount = rowCount;
    RECT inner = Inset(client, kFrame);
    inner.right = std::max(inner.right, inner.left);
    inner.bottom = std::max(inner.bottom, inner.top);
    const bool hasHeader = std::any_of(m_columns.begin(), m_columns.end(),
                                       [](const TreeColumn& column) { return !column.title.empty(); });
    m_header = inner;
    m_header.bottom = std::min<LONG>(inner.bottom, inner.top + (hasHeader ? TreePainter::HeaderHeight() : 0));
    inner.top = m_header.bottom;
    LayOutBars(inner);
}

void TreePlaces::LayOutBars(const RECT& inner) {
    const int thickness = CScrollBar::Thickness();
    bool isVertical = false;
    bool isHorizontal = false;
    // Each bar takes room from what the other one scrolls.
    for (int round = 0; round < 2; ++round) {
        const int height = HeightOf(inner) - (isHorizontal ? thickness : 0);
        isVertical = m_rowCount > height / TreePainter::RowHeight();
        const int width = WidthOf(inner) - (isVertical ? thickness : 0);
        m_layout.Fit(width);
        isHorizontal = m_layout.Total() > width;
    }
    m_rows = inner;
    if (isVertical) m_rows.right = std::max(inner.left, inner.right - thickness);
    if (isHorizontal) m_rows.bottom = std::max(inner.top, inner.bottom - thickness);
    const RECT right{m_rows.right, inner.top, inner.right, m_rows.bottom};
    const RECT below{inner.left, m_rows.bottom, m_rows.right, inner.bottom};
    m_corner = {m_rows.right, m_rows.bottom, inner.right, inner.bottom};
    m_vertical.SetPlace(isVertical ? right : RECT{});
    m_horizontal.SetPlace(isHorizontal ? below : RECT{});
    ScrollRange rows{m_rowCount, std::max(1, HeightOf(m_rows) / TreePainter::RowHeight()), 0};
    rows.position = rows.Clamp(m_vertical.Range().position);
    m_vertical.SetRange(rows);
    ScrollRange pixels{m_layout.Total(), WidthOf(m_rows), 0};
    pixels.position = pixels.Clamp(m_horizontal.Range().position);
    m_horizontal.SetRange(pixels);
}

void TreePlaces::MoveRowsBehind(int row, int by) {
    ScrollRange range = m_vertical.Range();
    if (range.position <= row) return;
    // LayOut brings it into the range of the rows there are then.
    range.position = std::max(range.position + by, row < 0 ? 0 : row);
    m_vertical.SetRange(range);
}

RECT TreePlaces::Row(int row) const {
    const int height = TreePainter::RowHeight();
    // Rows far away would leave the range of pixels.
    const int distance = std::clamp(row - FirstRow(), -10'000, 10'000);
    const LONG top = m_rows.top + distance * height;
    return {m_rows.left, top, m_rows.right, top + height};
}

RECT TreePlaces::WholeCell(CellId cell) const {
    const RECT row = Row(cell.row);
    const LONG left = m_rows.left + m_layout.Left(cell.column) - m_horizontal.Range().position;
    return {left, row.top, left + m_layout.Width(cell.column), row.bottom};
}

RECT TreePlaces::SeenCell(CellId cell) const {
    RECT seen{};
    if (cell.row < 0 || cell.row >= m_rowCount || cell.column < 0 || cell.column >= m_layout.Count()) return seen;
    const RECT whole = WholeCell(cell);
    ::IntersectRect(&seen, &whole, &m_rows);
    return seen;
}

RECT TreePlaces::HeaderCell(int column) const {
    const RECT cell = WholeCell({0, column});
    return {cell.left, m_header.top, cell.right, m_header.bottom};
}

CellPlaces TreePlaces::PartsOf(CellId cell) const {
    return TreePainter::PlaceParts(m_source.Cell(cell.row, cell.column), LevelOf(cell.row), WholeCell(cell),
                                   KeepsExpander(cell.column));
}

int TreePlaces::RowAt(POINT point) const {
    if (!::PtInRect(&m_rows, point)) return -1;
    const int row = FirstRow() + (point.y - m_rows.top) / TreePainter::RowHeight();
    return row < m_rowCount && m_source.Has(row) ? row : -1;
}

std::optional<CellId> TreePlaces::CellAt(POINT point) const {
    const CellId cell{RowAt(point), ColumnAt(point)};
    if (cell.row < 0 || cell.column < 0) return std::nullopt;
    return cell;
}

bool TreePlaces::IsOnCheck(CellId cell, POINT point) const {
    const CellPlaces parts = PartsOf(cell);
    return ::PtInRect(&parts.check, point) != FALSE;
}

int TreePlaces::DividerAt(POINT point) const {
    if (!::PtInRect(&m_header, point)) return ColumnLayout::kNone;
    return m_layout.DividerAt(Along(point), Scale(kDividerReach));
}

}  // namespace brennvar
