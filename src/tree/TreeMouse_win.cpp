// What the mouse does to a tree.
#include <algorithm>
#include <utility>

#include "tree/CellTip_win.h"
#include "tree/Tree_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kDividerReach = 4;  // pixels at 96 per inch, on both sides
constexpr UINT_PTR kRepeatTimer = 1;
constexpr UINT_PTR kTipTimer = 2;
constexpr UINT kFirstRepeat = 300;  // ms, then every kNextRepeat
constexpr UINT kNextRepeat = 40;

}  // namespace

void CTree::BeginGrip(Grip grip) {
    m_grip = grip;
    ::SetCapture(Window());
}

void CTree::OnLeftDown(POINT point, UINT keys) {
    m_mouse = point;
    HideTip();
    if (::GetFocus() != Window()) ::SetFocus(Window());
    if (PressBar(point) || PressHeader(point, false)) return;
    PressRow(point, keys, false);
}

void CTree::OnDoubleClick(POINT point, UINT keys) {
    m_mouse = point;
    if (PressBar(point) || PressHeader(point, true)) return;
    PressRow(point, keys, true);
}

void CTree::OnRightDown(POINT point) {
    HideTip();
    if (::GetFocus() != Window()) ::SetFocus(Window());
    const int row = RowAt(point);
    if (row < 0 || m_selection.IsSelected(row)) return;
    ChangeSelection([=](RowSelection& selection) { return selection.SelectOnly(row); });
}

void CTree::PressRow(POINT point, UINT keys, bool isSecond) {
    if (std::exchange(m_showsFocus, false)) RefreshRow(FocusedRow());
    const std::optional<CellId> cell = CellAt(point);
    const int row = RowAt(point);
    if (row < 0) {
        if (::PtInRect(&m_rows, point) && (keys & (MK_CONTROL | MK_SHIFT)) == 0 && m_setup.selectsMany) {
            ChangeSelection([](RowSelection& selection) { return selection.SelectOnly(-1); });
        }
        return;
    }
    if (cell) {
        const CellPlaces parts = PartsOf(*cell);
        if (::PtInRect(&parts.expander, point)) {
            ExpandByUser(row, !m_source.Row(row).isExpanded);
            return;
        }
        if (::PtInRect(&parts.check, point)) {
            m_gripCell = *cell;
            BeginGrip(Grip::Check);
            RefreshRow(row);
            return;
        }
        if (events.cellClicked && events.cellClicked(row, cell->column)) return;
    }
    if (!isSecond) {
        const RowSelection::Keys held{.control = (keys & MK_CONTROL) != 0, .shift = (keys & MK_SHIFT) != 0};
        ChangeSelection([=](RowSelection& selection) { return selection.Click(row, held); });
    } else if (events.opened) {
        events.opened(row);
    } else if (m_setup.hasLevels) {
        ExpandByUser(row, !m_source.Row(row).isExpanded);
    }
}

bool CTree::PressBar(POINT point) {
    for (CScrollBar* bar : {&m_vertical, &m_horizontal}) {
        if (!bar->Contains(point)) continue;
        const bool isVertical = bar == &m_vertical;
        const int position = bar->Press(point);
        BeginGrip(isVertical ? Grip::VerticalBar : Grip::HorizontalBar);
        RepaintBar(*bar);
        if (isVertical) {
            ScrollVertically(position);
        } else {
            ScrollHorizontally(position);
        }
        if (bar->Pressed() != CScrollBar::Part::Thumb) ::SetTimer(Window(), kRepeatTimer, kFirstRepeat, nullptr);
        return true;
    }
    return ::PtInRect(&m_corner, point) != FALSE;
}

bool CTree::PressHeader(POINT point, bool isSecond) {
    if (!::PtInRect(&m_header, point)) return false;
    const int x = point.x - m_header.left + m_horizontal.Range().position;
    const int divider = m_layout.DividerAt(x, Scale(kDividerReach));
    if (divider >= 0 && isSecond) {
        FitColumn(divider);
        return true;
    }
    m_gripColumn = divider >= 0 ? divider : m_layout.ColumnAt(x);
    if (m_gripColumn < 0) return true;
    m_gripOffset = x - m_layout.Left(m_gripColumn) - m_layout.Width(m_gripColumn);
    BeginGrip(divider >= 0 ? Grip::Divider : Grip::Header);
    Repaint(m_header);
    return true;
}

void CTree::FitColumn(int column) {
    int width = Scale(m_columns[static_cast<std::size_t>(column)].minimalWidth);
    const HDC dc = ::GetDC(Window());
    {
        const CSelect font(dc, m_painter->Font());
        const int end = SeenEnd();
        for (int row = FirstVisibleRow(); row < end; ++row) {
            const TreeCell cell = m_source.Cell(row, column);
            const TreeRow state = m_setup.hasLevels ? m_source.Row(row) : TreeRow{};
            const CellPlaces parts = TreePainter::PlaceParts(cell, state, {0, 0, 10'000, TreePainter::RowHeight()},
                                                             m_setup.hasLevels && column == 0);
            width = std::max(width, m_painter->NeededWidth(dc, cell, parts));
        }
    }
    ::ReleaseDC(Window(), dc);
    m_layout.Drag(column, width);
    LayOut();
    Repaint();
    if (events.widthsChanged) events.widthsChanged();
}

void CTree::OnMouseMove(POINT point, UINT) {
    m_mouse = point;
    switch (m_grip) {
        case Grip::VerticalBar:
        case Grip::HorizontalBar: DragBar(point); return;
        case Grip::Divider:
            m_layout.Drag(m_gripColumn, point.x - m_header.left + m_horizontal.Range().position - m_gripOffset -
                                            m_layout.Left(m_gripColumn));
            LayOut();
            Repaint();
            return;
        case Grip::Header:
        case Grip::Check: return;
        case Grip::None: break;
    }
    for (CScrollBar* bar : {&m_vertical, &m_horizontal}) {
        if (bar->SetHot(point)) RepaintBar(*bar);
    }
    const int x = point.x - m_header.left + m_horizontal.Range().position;
    SetHotHeader(::PtInRect(&m_header, point) ? m_layout.ColumnAt(x) : -1);
    const std::optional<CellId> cell = CellAt(point);
    SetHotCell(cell, point);
    UpdateTip(cell);
}

void CTree::OnMouseLeave() {
    for (CScrollBar* bar : {&m_vertical, &m_horizontal}) {
        if (bar->ClearHot()) RepaintBar(*bar);
    }
    SetHotHeader(-1);
    SetHotCell(std::nullopt, {});
    HideTip();
}

void CTree::SetHotHeader(int column) {
    if (std::exchange(m_hotHeader, column) != column) Repaint(m_header);
}

void CTree::SetHotCell(std::optional<CellId> cell, POINT point) {
    CellId hot;
    if (cell) {
        const CellPlaces parts = PartsOf(*cell);
        if (::PtInRect(&parts.check, point)) hot = *cell;
    }
    const CellId before = std::exchange(m_hotCheck, hot);
    if (before == hot) return;
    if (before.row >= 0) RefreshRow(before.row);
    if (hot.row >= 0) RefreshRow(hot.row);
}

void CTree::DragBar(POINT point) {
    if (m_grip == Grip::VerticalBar) {
        ScrollVertically(m_vertical.Drag(point));
    } else {
        ScrollHorizontally(m_horizontal.Drag(point));
    }
}

void CTree::RepeatBar() {
    ::SetTimer(Window(), kRepeatTimer, kNextRepeat, nullptr);
    if (m_grip == Grip::VerticalBar) ScrollVertically(m_vertical.Repeat(m_mouse));
    if (m_grip == Grip::HorizontalBar) ScrollHorizontally(m_horizontal.Repeat(m_mouse));
}

void CTree::OnLeftUp(POINT point, UINT) {
    const Grip grip = m_grip;
    const int column = m_gripColumn;
    const CellId cell = m_gripCell;
    if (grip == Grip::None) return;
    ::ReleaseCapture();  // which ends the grip
    if (grip == Grip::Divider && events.widthsChanged) events.widthsChanged();
    if (grip == Grip::Header) {
        const RECT place = HeaderCellRect(column);
        if (::PtInRect(&place, point) && events.headerClicked) events.headerClicked(column);
    }
    if (grip == Grip::Check && CellAt(point) == cell) {
        const CellPlaces parts = PartsOf(cell);
        if (::PtInRect(&parts.check, point)) ToggleCheck(cell);
    }
}

void CTree::OnCaptureLost() {
    const Grip grip = std::exchange(m_grip, Grip::None);
    if (grip == Grip::None) return;
    ::KillTimer(Window(), kRepeatTimer);
    m_vertical.Release();
    m_horizontal.Release();
    if (grip == Grip::VerticalBar) RepaintBar(m_vertical);
    if (grip == Grip::HorizontalBar) RepaintBar(m_horizontal);
    if (grip == Grip::Header || grip == Grip::Divider) Repaint(m_header);
    if (grip == Grip::Check) RefreshRow(m_gripCell.row);
}

void CTree::ToggleCheck(CellId cell) {
    // Looked up anew: it may be another one than the one that was pressed.
    const std::optional<bool> checked = m_source.Cell(cell.row, cell.column).checked;
    if (!checked || !events.checkToggled) return;
    events.checkToggled(cell.row, cell.column, !*checked);
    RefreshRow(cell.row);
    ::NotifyWinEvent(EVENT_OBJECT_STATECHANGE, Window(), OBJID_CLIENT, cell.row + 1);
}

void CTree::OnWheel(int delta, bool isHorizontal) {
    UINT lines = 3;
    ::SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const bool isSideways = isHorizontal || ::GetKeyState(VK_SHIFT) < 0;
    int& rest = isSideways ? m_sideWheelRest : m_wheelRest;
    const int page = PageRows();
    const int perNotch =
        lines == WHEEL_PAGESCROLL || static_cast<int>(lines) > page ? page : static_cast<int>(lines);
    // Fine wheels send parts of a notch; what does not make a row yet is kept.
    rest += delta * perNotch;
    const int rows = rest / WHEEL_DELTA;
    rest -= rows * WHEEL_DELTA;
    if (!isSideways) {
        ScrollVertically(m_vertical.Range().After(-rows));
        return;
    }
    // Away from the user is left with Shift, but to tilt the wheel right is right.
    const int pixels = rows * CScrollBar::Thickness();
    ScrollHorizontally(m_horizontal.Range().After(isHorizontal ? pixels : -pixels));
}

void CTree::OnTimer(UINT_PTR id) {
    if (id == kRepeatTimer && m_grip != Grip::None) RepeatBar();
    if (id == kTipTimer) ShowTip();
}

std::optional<LRESULT> CTree::OnSetCursor() const {
    POINT point{};
    ::GetCursorPos(&point);
    ::ScreenToClient(Window(), &point);
    const int x = point.x - m_header.left + m_horizontal.Range().position;
    if (!::PtInRect(&m_header, point) || m_layout.DividerAt(x, Scale(kDividerReach)) < 0) return std::nullopt;
    ::SetCursor(::LoadCursorA(nullptr, IDC_SIZEWE));
    return TRUE;
}

void CTree::OnContextMenu(POINT point) {
    if (!events.contextMenu) return;
    HideTip();
    if (point.x != -1 || point.y != -1) {
        POINT inside = point;
        ::ScreenToClient(Window(), &inside);
        if (::PtInRect(&m_rows, inside)) events.contextMenu(RowAt(inside), point);
        return;
    }
    const int row = m_source.Has(FocusedRow()) ? FocusedRow() : -1;
    POINT place{m_rows.left + Scale(16), m_rows.top};
    if (row >= 0) {
        EnsureVisible(row);
        place.y = RowRect(row).bottom;
    }
    ::ClientToScreen(Window(), &place);
    events.contextMenu(row, place);
}

void CTree::UpdateTip(std::optional<CellId> cell) {
    if (cell.value_or(CellId{}) == m_tipCell) return;
    HideTip();
    m_tipCell = cell.value_or(CellId{});
    UINT delay = 400;  // ms
    ::SystemParametersInfoA(SPI_GETMOUSEHOVERTIME, 0, &delay, 0);
    if (cell) ::SetTimer(Window(), kTipTimer, delay, nullptr);
}

void CTree::ShowTip() {
    ::KillTimer(Window(), kTipTimer);
    if (m_tipCell.row < 0 || m_tipCell.row >= m_rowCount) return;
    const TreeCell cell = m_source.Cell(m_tipCell.row, m_tipCell.column);
    const CellPlaces parts = PartsOf(m_tipCell);
    const HDC dc = ::GetDC(Window());
    RECT text = parts.text;
    bool isCut = text.right > m_rows.right || text.left < m_rows.left;
    {
        const CSelect font(dc, m_painter->Font());
        isCut = isCut || m_painter->IsCut(dc, cell, parts);
    }
    ::ReleaseDC(Window(), dc);
    if (!isCut || cell.text.empty()) return;
    text.left = std::max(text.left, m_rows.left);
    ::MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&text), 2);
    m_tip->Show(Window(), text, cell.text);
}

// A list that is refreshed every few seconds does not take the text away that somebody reads.
void CTree::CheckTip() {
    if (!m_tip->IsShown() || m_source.Cell(m_tipCell.row, m_tipCell.column).text != m_tip->Text()) HideTip();
}

void CTree::HideTip() {
    m_tipCell = {};
    if (!Window()) return;
    ::KillTimer(Window(), kTipTimer);
    m_tip->Hide();
}

}  // namespace brennvar
