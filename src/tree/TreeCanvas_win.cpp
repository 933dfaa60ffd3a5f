#include "tree/TreeCanvas_win.h"

#include <algorithm>
#include <utility>

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

// Through a buffer where somebody looks: a bitmap is painted on as it is.
template <class Paint>
void PaintAtOnce(HDC dc, const RECT& place, const Paint& paint) {
    if (::GetObjectType(dc) == OBJ_MEMDC) return paint(dc);
    const CBufferedDc buffer(dc, place);
    paint(buffer.Dc());
}

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
    const FocusOnce focus;
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
        PaintAtOnce(dc, bar->Place(), [&](HDC target) { bar->Paint(target, *m_pictures, colours); });
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
        if (cell.right <= invalid.left || cell.left >= invalid.right || cell.left == cell.right) continue;
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
    m_sheet.Begin(dc, {WidthOf(rows), height}, HeightOf(rows) / height + 2);
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
    const CSelect font(buffer.Dc(), painter.Font());
    ::SetBkMode(buffer.Dc(), TRANSPARENT);
    PaintEmptyNote(buffer.Dc(), rows, m_state.Setup().empty, painter.Colours());
}

void TreeCanvas::PaintRow(HDC dc, int row, const RECT& place, const RECT& invalid) {
    const int height = TreePainter::RowHeight();
    const int width = WidthOf(m_places.Rows());
    ReadRow(row, width);
    DescribeRow(width);
    const RowSheet::Place sheet = m_sheet.PlaceOf(row, m_description);
    if (!sheet.dc) return;
    if (!sheet.isPainted) PaintContent(sheet.dc, {0, sheet.top, width, sheet.top + height});
    const LONG left = invalid.left - m_places.Rows().left;
    ::BitBlt(dc, invalid.left, place.top, WidthOf(invalid), HeightOf(place), sheet.dc, left, sheet.top, SRCCOPY);
}

void TreeCanvas::ReadRow(int row, int width) {
    const bool hasFocus = HasFocus();
    const bool isAlternate = m_state.Setup().isZebra && row % 2 != 0;
    m_row.isSelected = m_state.Selection().IsSelected(row);
    m_row.ground = m_state.Painter().RowGround(isAlternate, m_row.isSelected, hasFocus);
    m_row.state = m_state.Source().Row(row);
    m_row.showsFocus = m_state.ShowsFocus() && hasFocus && row == m_state.FocusedRow();
    m_row.cells.clear();
    LONG left = -m_places.Horizontal().Range().position;
    for (int column = 0; column < m_places.Columns().Count(); ++column) {
        const LONG right = left + m_places.Columns().Width(column);
        if (right > 0 && left < width && left < right) {
            TreeCell content = m_state.Source().Cell(row, column);
            const Touch check = content.checked ? m_pointer.TouchOfCheck({row, column}) : Touch::Rest;
            m_row.cells.push_back({column, left, right, check, std::move(content)});
        }
        left = right;
    }
}

void TreeCanvas::DescribeRow(int width) {
    m_description.clear();
    const auto add = [this](const auto& value) {
        m_description.append(reinterpret_cast<const char*>(&value), sizeof(value));
    };
    add(width);
    add(m_row.ground);
    add(m_row.state.level);
    add(m_row.state.mark);
    for (const bool flag : {m_row.isSelected, m_row.showsFocus, m_row.state.hasChildren, m_row.state.isExpanded})
        add(flag);
    for (const RowContent::Cell& cell : m_row.cells) {
        const TreeCell& content = cell.content;
        add(cell.column);
        add(cell.left);
        add(cell.right);
        add(m_places.KeepsExpander(cell.column));
        add(content.icon);
        add(content.image);
        add(content.imageFrame);
        add(content.imageFrameCount);
        add(content.bar);
        add(content.checked ? (*content.checked ? 2 : 1) : 0);
        add(cell.check);
        add(content.glyph);
        add(content.tone);
        add(content.textColour.value_or(CLR_INVALID));
        add(content.text.size());
        m_description += content.text;
    }
}

void TreeCanvas::PaintContent(HDC dc, const RECT& place) const {
    TreePainter& painter = m_state.Painter();
    const SavedDc saved(dc);
    ::IntersectClipRect(dc, place.left, place.top, place.right, place.bottom);
    ::SelectObject(dc, painter.Font());
    ::SetBkMode(dc, TRANSPARENT);
    FillSolid(dc, place, m_row.ground);
    for (const RowContent::Cell& cell : m_row.cells) {
        const RECT whole{cell.left, place.top, cell.right, place.bottom};
        const CellPlaces parts =
            TreePainter::PlaceParts(cell.content, m_row.state, whole, m_places.KeepsExpander(cell.column));
        painter.PaintCell(dc, cell.content, m_row.state, parts, m_places.Column(cell.column), cell.check,
                          m_row.isSelected);
    }
    painter.PaintMarks(dc, place, m_row.isSelected, m_row.state.mark);
    if (m_row.showsFocus) painter.PaintFocus(dc, place);
}

}  // namespace brennvar
