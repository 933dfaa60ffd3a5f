// How a tree paints itself: only what is invalid, row by row through one buffer that is kept.
#include <algorithm>

#include "tree/Tree_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

// BeginPaint and EndPaint, whatever happens in between.
class CPaintScope {
public:
    explicit CPaintScope(HWND window) : m_window(window) { ::BeginPaint(window, &m_paint); }
    CPaintScope(const CPaintScope&) = delete;
    CPaintScope& operator=(const CPaintScope&) = delete;
    ~CPaintScope() { ::EndPaint(m_window, &m_paint); }
    [[nodiscard]] HDC Dc() const { return m_paint.hdc; }
    [[nodiscard]] const RECT& Invalid() const { return m_paint.rcPaint; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
};

bool IsSeen(HDC dc, const RECT& place) {
    return !::IsRectEmpty(&place) && ::RectVisible(dc, &place);
}

}  // namespace

void CTree::PaintWindow() {
    const CPaintScope paint(Window());
    OnPaint(paint.Dc(), paint.Invalid());
}

// The DC is the window's: what is painted shows at once, and what is not invalid is clipped.
void CTree::OnPaint(HDC dc, const RECT& invalid) {
    const RECT client = ClientRect();
    const Palette& colours = m_painter->Colours();
    const RECT inside = Inset(client, 2);
    if (invalid.left < inside.left || invalid.top < inside.top || invalid.right > inside.right ||
        invalid.bottom > inside.bottom) {
        DrawFrame(dc, client, colours.frame1);
        DrawFrame(dc, Inset(client, 1), colours.frame2);
    }
    if (IsSeen(dc, m_header)) PaintHeader(dc, invalid);
    if (IsSeen(dc, m_rows)) PaintRows(dc, invalid);
    for (const CScrollBar* bar : {&m_vertical, &m_horizontal}) {
        if (!IsSeen(dc, bar->Place())) continue;
        const CBufferedDc buffer(dc, bar->Place());
        bar->Paint(buffer.Dc(), *m_pictures, colours);
    }
    if (IsSeen(dc, m_corner)) {
        const CBufferedDc buffer(dc, m_corner);
        FillSolid(buffer.Dc(), m_corner, colours.page);
        m_pictures->corner.DrawFrame(buffer.Dc(), m_corner, 0, 1);
    }
}

void CTree::PaintHeader(HDC dc, const RECT& invalid) {
    const RECT header{0, 0, WidthOf(m_header), HeightOf(m_header)};
    const HDC buffer = m_buffer.Prepare(dc, header.right, header.bottom, m_painter->Font());
    if (!buffer) return;
    m_painter->PaintHeaderGround(buffer, header);
    for (int column = 0; column < m_layout.Count(); ++column) {
        RECT cell = HeaderCellRect(column);
        if (cell.right <= invalid.left || cell.left >= invalid.right) continue;
        ::OffsetRect(&cell, -m_header.left, -m_header.top);
        Touch touch = m_hotHeader == column ? Touch::Hot : Touch::Rest;
        if (m_grip == Grip::Header && m_gripColumn == column) touch = Touch::Pressed;
        auto sort = TreePainter::Sort::None;
        if (m_sortColumn == column) sort = m_isAscending ? TreePainter::Sort::Up : TreePainter::Sort::Down;
        m_painter->PaintHeaderCell(buffer, cell, cell.right < header.right,
                                   m_columns[static_cast<std::size_t>(column)], sort, touch);
    }
    ::BitBlt(dc, m_header.left, m_header.top, header.right, header.bottom, buffer, 0, 0, SRCCOPY);
}

void CTree::PaintRows(HDC dc, const RECT& invalid) {
    RECT part{};
    if (!::IntersectRect(&part, &m_rows, &invalid)) return;
    const int height = TreePainter::RowHeight();
    const int firstRow = FirstVisibleRow() + (part.top - m_rows.top) / height;
    const int behind = (part.bottom - m_rows.top + height - 1) / height;  // from the first row in sight
    const int endRow = FirstVisibleRow() + std::min(m_rowCount - FirstVisibleRow(), behind);
    for (int row = firstRow; row < endRow; ++row) {
        RECT place = RowRect(row);
        place.bottom = std::min(place.bottom, m_rows.bottom);
        if (::RectVisible(dc, &place)) PaintRow(dc, row, place, part);
    }
    RECT rest = m_rows;
    rest.top = std::max(rest.top, RowRect(std::max(endRow, 0)).top);
    if (m_rowCount > endRow || ::IsRectEmpty(&rest)) return;
    const CBufferedDc buffer(dc, rest);
    FillSolid(buffer.Dc(), rest, m_painter->Colours().list);
    if (m_rowCount > 0) return;
    if (m_showsFocus && ::GetFocus() == Window()) m_painter->PaintFocus(buffer.Dc(), m_rows);
    if (m_setup.emptyText.empty()) return;
    const CSelect font(buffer.Dc(), m_painter->Font());
    ::SetBkMode(buffer.Dc(), TRANSPARENT);
    m_painter->PaintEmptyText(buffer.Dc(), m_rows, m_setup.emptyText);
}

void CTree::PaintRow(HDC dc, int row, const RECT& place, const RECT& invalid) {
    const int height = TreePainter::RowHeight();
    const HDC buffer = m_buffer.Prepare(dc, WidthOf(m_rows), height, m_painter->Font());
    if (!buffer) return;
    // In the buffer's coordinates.
    const LONG left = invalid.left - m_rows.left;
    const LONG right = invalid.right - m_rows.left;
    const bool hasFocus = ::GetFocus() == Window();
    const bool isAlternate = m_setup.isZebra && row % 2 != 0;
    const COLORREF ground = m_painter->RowGround(isAlternate, m_selection.IsSelected(row), hasFocus);
    FillSolid(buffer, {left, 0, right, height}, ground);
    const TreeRow state = m_setup.hasLevels ? m_source.Row(row) : TreeRow{};
    LONG cellLeft = -m_horizontal.Range().position;
    for (int column = 0; column < m_layout.Count(); ++column) {
        const RECT cell{cellLeft, 0, cellLeft + m_layout.Width(column), height};
        cellLeft = cell.right;
        if (cell.right <= left || cell.left >= right) continue;
        const TreeCell content = m_source.Cell(row, column);
        const CellPlaces parts = TreePainter::PlaceParts(content, state, cell, m_setup.hasLevels && column == 0);
        const Touch touch = content.checked ? TouchOfCheck({row, column}) : Touch::Rest;
        m_painter->PaintCell(buffer, content, state, parts, m_columns[static_cast<std::size_t>(column)].isNumber,
                             touch);
    }
    if (m_showsFocus && hasFocus && row == FocusedRow()) {
        m_painter->PaintFocus(buffer, {0, 0, WidthOf(m_rows), height});
    }
    ::BitBlt(dc, invalid.left, place.top, right - left, HeightOf(place), buffer, left, 0, SRCCOPY);
}

Touch CTree::TouchOfCheck(CellId cell) const {
    if (m_grip == Grip::Check && m_gripCell == cell) return Touch::Pressed;
    return m_hotCheck == cell ? Touch::Hot : Touch::Rest;
}

}  // namespace brennvar
