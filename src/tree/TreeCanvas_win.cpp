#include "tree/TreeCanvas_win.h"

#include <algorithm>

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

void TreeCanvas::Begin(const Look& look) {
    m_pictures = std::make_unique<ScrollPictures>(look.skin);
}

void TreeCanvas::SetSortMark(int column, bool isAscending) {
    m_sortColumn = column;
    m_sort = isAscending ? TreePainter::Sort::Up : TreePainter::Sort::Down;
    m_state.Repaint(m_places.Header());
}

void TreeCanvas::PaintWindow() {
    const CPaintScope paint(m_state.Window());
    Paint(paint.Dc(), paint.Invalid());
}

void TreeCanvas::Paint(HDC dc, const RECT& invalid) {
    RECT client{};
    ::GetClientRect(m_state.Window(), &client);
    const Palette& colours = m_state.Painter().Colours();
    const RECT inside = Inset(client, TreePlaces::kFrame);
    if (invalid.left < inside.left || invalid.top < inside.top || invalid.right > inside.right ||
        invalid.bottom > inside.bottom) {
        DrawFrame(dc, client, colours.frame2);
        DrawFrame(dc, Inset(client, 1), colours.list);
    }
    if (IsSeen(dc, m_places.Header())) PaintHeader(dc, invalid);
    if (IsSeen(dc, m_places.Rows())) PaintRows(dc, invalid);
    for (const CScrollBar* bar : {&m_places.Vertical(), &m_places.Horizontal()}) {
        if (!IsSeen(dc, bar->Place())) continue;
        const CBufferedDc buffer(dc, bar->Place());
        bar->Paint(buffer.Dc(), *m_pictures, colours);
    }
    if (const RECT& corner = m_places.Corner(); IsSeen(dc, corner)) {
        const CBufferedDc buffer(dc, corner);
        FillSolid(buffer.Dc(), corner, colours.page);
        m_pictures->corner.DrawFrame(buffer.Dc(), corner, 0, 1);
    }
}

void TreeCanvas::PaintHeader(HDC dc, const RECT& invalid) {
    TreePainter& painter = m_state.Painter();
    const RECT& place = m_places.Header();
    const RECT header{0, 0, WidthOf(place), HeightOf(place)};
    const HDC buffer = m_buffer.Prepare(dc, header.right, header.bottom, painter.Font());
    if (!buffer) return;
    painter.PaintHeaderGround(buffer, header);
    for (int column = 0; column < m_places.Columns().Count(); ++column) {
        RECT cell = m_places.HeaderCell(column);
        if (cell.right <= invalid.left || cell.left >= invalid.right) continue;
        ::OffsetRect(&cell, -place.left, -place.top);
        painter.PaintHeaderCell(buffer, cell, cell.right < header.right, m_places.Column(column),
                                m_sortColumn == column ? m_sort : TreePainter::Sort::None,
                                m_pointer.TouchOfHeader(column));
    }
    ::BitBlt(dc, place.left, place.top, header.right, header.bottom, buffer, 0, 0, SRCCOPY);
}

void TreeCanvas::PaintRows(HDC dc, const RECT& invalid) {
    const RECT& rows = m_places.Rows();
    RECT part{};
    if (!::IntersectRect(&part, &rows, &invalid)) return;
    const int height = TreePainter::RowHeight();
    const int first = m_places.FirstRow();
    const int behind = (part.bottom - rows.top + height - 1) / height;  // from the first row in sight
    const int end = first + std::min(m_places.RowCount() - first, behind);
    for (int row = first + (part.top - rows.top) / height; row < end; ++row) {
        RECT place = m_places.Row(row);
        place.bottom = std::min(place.bottom, rows.bottom);
        if (::RectVisible(dc, &place)) PaintRow(dc, row, place, part);
    }
    RECT rest = rows;
    rest.top = std::max(rest.top, m_places.Row(std::max(end, 0)).top);
    if (m_places.RowCount() <= end && !::IsRectEmpty(&rest)) PaintRest(dc, rest);
    if (const RECT line = m_pointer.Drag().Line(); !::IsRectEmpty(&line)) {
        FillSolid(dc, line, m_state.Painter().Colours().accent);
    }
}

void TreeCanvas::PaintRest(HDC dc, const RECT& rest) {
    const TreePainter& painter = m_state.Painter();
    const RECT& rows = m_places.Rows();
    const CBufferedDc buffer(dc, rest);
    FillSolid(buffer.Dc(), rest, painter.Colours().list);
    if (m_places.RowCount() > 0) return;
    if (m_state.ShowsFocus() && HasFocus()) painter.PaintFocus(buffer.Dc(), rows);
    if (m_state.Setup().emptyText.empty()) return;
    const CSelect font(buffer.Dc(), painter.Font());
    ::SetBkMode(buffer.Dc(), TRANSPARENT);
    painter.PaintEmptyText(buffer.Dc(), rows, m_state.Setup().emptyText);
}

void TreeCanvas::PaintRow(HDC dc, int row, const RECT& place, const RECT& invalid) {
    TreePainter& painter = m_state.Painter();
    const int height = TreePainter::RowHeight();
    const int width = WidthOf(m_places.Rows());
    const HDC buffer = m_buffer.Prepare(dc, width, height, painter.Font());
    if (!buffer) return;
    // In the buffer's coordinates.
    const LONG left = invalid.left - m_places.Rows().left;
    const LONG right = invalid.right - m_places.Rows().left;
    const bool hasFocus = HasFocus();
    const bool isAlternate = m_state.Setup().isZebra && row % 2 != 0;
    const COLORREF ground = painter.RowGround(isAlternate, m_state.Selection().IsSelected(row), hasFocus);
    FillSolid(buffer, {left, 0, right, height}, ground);
    const TreeRow state = m_state.Source().Row(row);
    LONG cellLeft = -m_places.Horizontal().Range().position;
    for (int column = 0; column < m_places.Columns().Count(); ++column) {
        const RECT cell{cellLeft, 0, cellLeft + m_places.Columns().Width(column), height};
        cellLeft = cell.right;
        if (cell.right <= left || cell.left >= right) continue;
        const TreeCell content = m_state.Source().Cell(row, column);
        const CellPlaces parts = TreePainter::PlaceParts(content, state, cell, m_places.KeepsExpander(column));
        const Touch touch = content.checked ? m_pointer.TouchOfCheck({row, column}) : Touch::Rest;
        painter.PaintCell(buffer, content, state, parts, m_places.Column(column), touch);
    }
    painter.PaintMark(buffer, {0, 0, width, height}, state.mark);
    if (m_state.ShowsFocus() && hasFocus && row == m_state.FocusedRow()) {
        painter.PaintFocus(buffer, {0, 0, width, height});
    }
    ::BitBlt(dc, invalid.left, place.top, right - left, HeightOf(place), buffer, left, 0, SRCCOPY);
}

}  // namespace brennvar
