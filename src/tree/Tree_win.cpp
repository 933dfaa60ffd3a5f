#include "tree/Tree_win.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "tree/CellTip_win.h"
#include "tree/TreeMessages_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kFrame = 2;            // pixels, one of each frame colour
constexpr int kWidestText = 10'000;  // pixels

}  // namespace

CTree::CTree() = default;
CTree::~CTree() = default;

bool CTree::Create(const TreeSetup& setup, const Look& look, std::span<const TreeColumn> columns, TreeRows& rows) {
    m_setup = setup;
    m_columns.assign(columns.begin(), columns.end());
    m_source.Set(rows);
    m_painter = std::make_unique<TreePainter>(look);
    m_pictures = std::make_unique<ScrollPictures>(look.skin);
    m_tip = std::make_unique<CCellTip>(look);
    m_selection.SetMode(setup.selectsMany ? RowSelection::Mode::Multiple : RowSelection::Mode::Single);
    std::vector<ColumnLayout::Column> widths;
    for (const TreeColumn& column : m_columns) {
        widths.push_back({Scale(column.width), Scale(column.minimalWidth), column.takesRoom});
    }
    m_layout.Set(std::move(widths));
    return CWindow::Create({.parent = setup.parent,
                            .text = {},
                            .style = WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS,
                            .id = setup.id,
                            .className = kTreeClass});
}

bool CTree::OnCreate() {
    Refresh();
    return true;
}

void CTree::OnDestroy() {
    HideTip();
}

void CTree::OnFocus(bool hasFocus) {
    // Who comes with Tab sees where the focus is.
    if (hasFocus && ::GetKeyState(VK_TAB) < 0) {
        m_showsFocus = true;
        if (FocusedRow() < 0 && m_rowCount > 0) {
            ChangeSelection([](RowSelection& selection) { return selection.FocusOnly(0); });
        }
    }
    Repaint(m_rows);
    if (FocusedRow() >= 0) ::NotifyWinEvent(EVENT_OBJECT_FOCUS, Window(), OBJID_CLIENT, FocusedRow() + 1);
}

void CTree::OnSize(int, int) {
    LayOut();
    Repaint();
}

void CTree::Refresh() {
    if (!Window()) return;
    CheckTip();
    const int count = m_source.Count();
    const bool isOther = std::exchange(m_rowCount, count) != count;
    m_selection.CutAt(count);
    LayOut();
    Repaint();
    if (isOther) ::NotifyWinEvent(EVENT_OBJECT_REORDER, Window(), OBJID_CLIENT, CHILDID_SELF);
}

void CTree::MoveRowsBehind(int row, int by) {
    m_selection.MoveRowsBehind(row, by);
    ScrollRange range = m_vertical.Range();
    if (range.position <= row) return;
    // The next Refresh brings it into the range of the rows there are then.
    range.position = std::max(range.position + by, row < 0 ? 0 : row);
    m_vertical.SetRange(range);
}

void CTree::RefreshRow(int row) const {
    RECT place = RowRect(row);
    if (::IntersectRect(&place, &place, &m_rows)) Repaint(place);
}

void CTree::SetEmptyText(const std::string& text) {
    if (std::exchange(m_setup.emptyText, text) != text && m_rowCount == 0) Repaint();
}

void CTree::LayOut() {
    RECT inner = Inset(ClientRect(), kFrame);
    inner.right = std::max(inner.right, inner.left);
    inner.bottom = std::max(inner.bottom, inner.top);
    const bool hasHeader = std::any_of(m_columns.begin(), m_columns.end(),
                                       [](const TreeColumn& column) { return !column.title.empty(); });
    m_header = inner;
    m_header.bottom = std::min<LONG>(inner.bottom, inner.top + (hasHeader ? TreePainter::HeaderHeight() : 0));
    inner.top = m_header.bottom;
    LayOutBars(inner);
}

void CTree::LayOutBars(const RECT& inner) {
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

RECT CTree::RowRect(int row) const {
    const int height = TreePainter::RowHeight();
    // Rows far away would leave the range of pixels.
    const int distance = std::clamp(row - FirstVisibleRow(), -10'000, 10'000);
    const LONG top = m_rows.top + distance * height;
    return {m_rows.left, top, m_rows.right, top + height};
}

RECT CTree::WholeCellRect(CellId cell) const {
    const RECT row = RowRect(cell.row);
    const LONG left = m_rows.left + m_layout.Left(cell.column) - m_horizontal.Range().position;
    return {left, row.top, left + m_layout.Width(cell.column), row.bottom};
}

RECT CTree::HeaderCellRect(int column) const {
    const RECT cell = WholeCellRect({0, column});
    return {cell.left, m_header.top, cell.right, m_header.bottom};
}

RECT CTree::CellRect(int row, int column) const {
    RECT seen{};
    if (row < 0 || row >= m_rowCount || column < 0 || column >= m_layout.Count()) return seen;
    const RECT whole = WholeCellRect({row, column});
    ::IntersectRect(&seen, &whole, &m_rows);
    return seen;
}

int CTree::RowAt(POINT point) const {
    if (!::PtInRect(&m_rows, point)) return -1;
    const int row = FirstVisibleRow() + (point.y - m_rows.top) / TreePainter::RowHeight();
    return row < m_rowCount && m_source.Has(row) ? row : -1;
}

std::optional<CTree::CellId> CTree::CellAt(POINT point) const {
    const int row = RowAt(point);
    const int column = m_layout.ColumnAt(point.x - m_rows.left + m_horizontal.Range().position);
    if (row < 0 || column < 0) return std::nullopt;
    return CellId{row, column};
}

CellPlaces CTree::PartsOf(CellId cell) const {
    const TreeRow row = m_setup.hasLevels ? m_source.Row(cell.row) : TreeRow{};
    return TreePainter::PlaceParts(m_source.Cell(cell.row, cell.column), row, WholeCellRect(cell),
                                   m_setup.hasLevels && cell.column == 0);
}

void CTree::ScrollTo(int firstRow) {
    ScrollVertically(firstRow);
}

void CTree::EnsureVisible(int row) {
    if (row < 0 || row >= m_rowCount) return;
    const int first = FirstVisibleRow();
    if (row < first) ScrollVertically(row);
    if (row >= first + PageRows()) ScrollVertically(row - PageRows() + 1);
}

void CTree::ScrollVertically(int position) {
    ScrollRange range = m_vertical.Range();
    const int before = std::exchange(range.position, range.Clamp(position));
    const int rows = range.position - before;
    if (rows == 0) return;
    HideTip();
    if (m_vertical.SetRange(range)) RepaintBar(m_vertical);
    if (std::abs(rows) > PageRows()) {
        Repaint(m_rows);
        return;
    }
    ::ScrollWindowEx(Window(), 0, -rows * TreePainter::RowHeight(), &m_rows, &m_rows, nullptr, nullptr,
                     SW_INVALIDATE);
}

void CTree::ScrollHorizontally(int position) {
    ScrollRange range = m_horizontal.Range();
    const int before = std::exchange(range.position, range.Clamp(position));
    if (range.position == before) return;
    HideTip();
    if (m_horizontal.SetRange(range)) RepaintBar(m_horizontal);
    Repaint(m_header);
    Repaint(m_rows);
}

int CTree::SelectedRow() const {
    const auto& ranges = SelectedRows().Ranges();
    return ranges.empty() ? -1 : ranges.front().first;
}

void CTree::SelectRow(int row) {
    RowRanges rows;
    if (row >= 0) rows.Add(row, row);
    SetSelection(std::move(rows), row);
}

void CTree::SetSelection(RowRanges rows, int focused) {
    const RowRanges before = SelectedRows();
    const int focusedBefore = FocusedRow();
    m_selection.Restore(std::move(rows), focused);
    m_selection.CutAt(m_rowCount);
    RepaintSelection(before, focusedBefore);
    AnnounceFocus(focusedBefore);
}

void CTree::ChangeSelection(const std::function<bool(RowSelection&)>& change) {
    const RowRanges before = SelectedRows();
    const int focusedBefore = FocusedRow();
    const bool isOther = change(m_selection);
    RepaintSelection(before, focusedBefore);
    AnnounceFocus(focusedBefore);
    if (!isOther) return;
    ::NotifyWinEvent(EVENT_OBJECT_SELECTION, Window(), OBJID_CLIENT, FocusedRow() + 1);
    if (events.selectionChanged) events.selectionChanged();
}

void CTree::RepaintSelection(const RowRanges& before, int focusedBefore) const {
    const int end = SeenEnd();
    for (int row = FirstVisibleRow(); row < end; ++row) {
        const bool hasFocusMoved = focusedBefore != FocusedRow() && (row == focusedBefore || row == FocusedRow());
        if (hasFocusMoved || before.Contains(row) != m_selection.IsSelected(row)) RefreshRow(row);
    }
}

void CTree::AnnounceFocus(int focusedBefore) const {
    if (FocusedRow() == focusedBefore) return;
    // The window text is that of the focused row.
    ::NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, Window(), OBJID_CLIENT, CHILDID_SELF);
    if (::GetFocus() == Window()) {
        ::NotifyWinEvent(EVENT_OBJECT_FOCUS, Window(), OBJID_CLIENT, FocusedRow() + 1);
    }
}

void CTree::SetExpanded(int row, bool isExpanded) {
    const TreeRow state = m_source.Row(row);
    if (!state.hasChildren || state.isExpanded == isExpanded) return;
    const int countBefore = m_rowCount;
    m_source.SetExpanded(row, isExpanded);
    MoveRowsBehind(row, m_source.Count() - countBefore);
    Refresh();
    ::NotifyWinEvent(EVENT_OBJECT_STATECHANGE, Window(), OBJID_CLIENT, row + 1);
}

void CTree::ExpandByUser(int row, bool isExpanded) {
    const RowRanges before = SelectedRows();
    SetExpanded(row, isExpanded);
    // Only selected rows that have gone are a change; others are the same rows with other numbers.
    if (before.Count() != SelectedRows().Count() && events.selectionChanged) events.selectionChanged();
}

void CTree::SetSortMark(int column, bool isAscending) {
    m_sortColumn = column;
    m_isAscending = isAscending;
    Repaint(m_header);
}

std::vector<int> CTree::ColumnWidths() const {
    std::vector<int> widths;
    widths.reserve(m_columns.size());
    const int unit = Scale(96);
    for (int column = 0; column < m_layout.Count(); ++column) {
        widths.push_back(::MulDiv(m_layout.Width(column), 96, unit));
    }
    return widths;
}

void CTree::SetColumnWidths(std::span<const int> widths) {
    std::vector<int> pixels;
    pixels.reserve(widths.size());
    for (const int width : widths) pixels.push_back(Scale(width));
    m_layout.Restore(pixels);
    LayOut();
    Repaint();
}

void CTree::WidenFor(int column, const std::string& text) {
    if (!Window()) return;
    const HDC dc = ::GetDC(Window());
    int width = 0;
    {
        const CSelect font(dc, m_painter->Font());
        TreeCell cell;
        cell.text = text;
        width = m_painter->NeededWidth(dc, cell, TreePainter::PlaceParts(cell, {}, {0, 0, kWidestText, 1}, false));
    }
    ::ReleaseDC(Window(), dc);
    m_layout.Widen(column, std::min(width, kWidestText));
}

}  // namespace brennvar
