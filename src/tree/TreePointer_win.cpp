#include "tree/TreePointer_win.h"

#include <algorithm>
#include <utility>

namespace brennvar {
namespace {

constexpr UINT kFirstRepeat = 300;  // ms, then every kNextRepeat
constexpr UINT kNextRepeat = 40;

}  // namespace

void TreePointer::BeginGrip(Grip grip) {
    m_grip = grip;
    ::SetCapture(m_state.Window());
}

void TreePointer::OnLeftDown(POINT point, UINT keys) {
    m_mouse = point;
    m_state.Tip().Hide();
    if (::GetFocus() != m_state.Window()) ::SetFocus(m_state.Window());
    if (PressBar(point) || PressHeader(point, false)) return;
    if (IsOnEmptyAction(point)) {
        if (m_state.events.emptyAction) m_state.events.emptyAction();
        return;
    }
    PressRow(point, keys, false);
}

void TreePointer::OnDoubleClick(POINT point, UINT keys) {
    m_mouse = point;
    if (PressBar(point) || PressHeader(point, true)) return;
    PressRow(point, keys, true);
}

void TreePointer::OnRightDown(POINT point) {
    m_state.Tip().Hide();
    if (::GetFocus() != m_state.Window()) ::SetFocus(m_state.Window());
    const int row = m_places.RowAt(point);
    if (row < 0 || m_state.Selection().IsSelected(row)) return;
    m_state.ChangeSelection([=](RowSelection& selection) { return selection.SelectOnly(row); });
}

bool TreePointer::PressBar(POINT point) {
    for (CScrollBar* bar : {&m_places.Vertical(), &m_places.Horizontal()}) {
        if (!bar->Contains(point)) continue;
        const int position = bar->Press(point);
        m_gripBar = bar;
        BeginGrip(Grip::Bar);
        m_state.Repaint(bar->Place());
        m_state.Scroll(*bar, position);
        if (bar->Pressed() != CScrollBar::Part::Thumb) {
            ::SetTimer(m_state.Window(), kTimer, kFirstRepeat, nullptr);
        }
        return true;
    }
    return ::PtInRect(&m_places.Corner(), point) != FALSE;
}

bool TreePointer::PressHeader(POINT point, bool isSecond) {
    if (!::PtInRect(&m_places.Header(), point)) return false;
    const int divider = m_places.DividerAt(point);
    if (divider >= 0 && isSecond) {
        m_state.FitColumn(divider);
        return true;
    }
    m_gripColumn = divider >= 0 ? divider : m_places.ColumnAt(point);
    if (m_gripColumn < 0) return true;
    const ColumnLayout& columns = m_places.Columns();
    m_gripOffset = m_places.Along(point) - columns.Left(m_gripColumn) - columns.Width(m_gripColumn);
    BeginGrip(divider >= 0 ? Grip::Divider : Grip::Header);
    m_state.Repaint(m_places.Header());
    return true;
}

void TreePointer::PressRow(POINT point, UINT keys, bool isSecond) {
    m_state.ShowFocus(false);
    const int row = m_places.RowAt(point);
    const RowSelection::Keys held{.control = (keys & MK_CONTROL) != 0, .shift = (keys & MK_SHIFT) != 0};
    if (row < 0) {
        if (::PtInRect(&m_places.Rows(), point) && !held.control && !held.shift && m_state.Setup().selectsMany) {
            m_state.ChangeSelection([](RowSelection& selection) { return selection.SelectOnly(-1); });
        }
        return;
    }
    const int column = m_places.ColumnAt(point);
    if (column >= 0) {
        if (PressPart({row, column}, point)) return;
        if (m_state.events.cellClicked && m_state.events.cellClicked(row, column)) return;
    }
    if (!isSecond) {
        const bool mayDrag = !held.control && !held.shift && m_drag.IsPossible();
        // Of several selected rows all are dragged, or one is selected: the button tells when it goes up.
        if (!mayDrag || !m_state.Selection().IsSelected(row)) {
            m_state.ChangeSelection([=](RowSelection& selection) { return selection.Click(row, held); });
        }
        if (!mayDrag) return;
        m_drag.Press(row, point);
        BeginGrip(Grip::Rows);
        return;
    }
    const TreeRow shape = m_state.Source().Row(row);
    if (m_places.HasLevels() && (shape.hasChildren || !m_state.events.opened)) {
        m_state.ExpandByUser(row, !shape.isExpanded);
    } else if (m_state.events.opened) {
        m_state.events.opened(row);
    }
}

bool TreePointer::PressPart(CellId cell, POINT point) {
    const CellPlaces parts = m_places.PartsOf(cell);
    if (::PtInRect(&parts.expander, point)) {
        m_state.ExpandByUser(cell.row, !m_state.Source().Row(cell.row).isExpanded);
        return true;
    }
    if (!::PtInRect(&parts.check, point)) return false;
    m_gripCell = cell;
    BeginGrip(Grip::Check);
    m_state.RepaintRow(cell.row);
    return true;
}

void TreePointer::OnMove(POINT point) {
    m_mouse = point;
    switch (m_grip) {
        case Grip::Bar: m_state.Scroll(*m_gripBar, m_gripBar->Drag(point)); return;
        case Grip::Divider:
            m_state.DragColumn(m_gripColumn,
                               m_places.Along(point) - m_gripOffset - m_places.Columns().Left(m_gripColumn));
            return;
        case Grip::Header:
        case Grip::Check: return;
        case Grip::Rows: {
            const bool wasUnderWay = m_drag.IsUnderWay();
            m_drag.Move(point);
            if (!wasUnderWay && m_drag.IsUnderWay()) ::SetTimer(m_state.Window(), kTimer, kNextRepeat, nullptr);
            return;
        }
        case Grip::None: break;
    }
    for (CScrollBar* bar : {&m_places.Vertical(), &m_places.Horizontal()}) {
        if (bar->SetHot(point)) m_state.Repaint(bar->Place());
    }
    SetHotHeader(::PtInRect(&m_places.Header(), point) ? m_places.ColumnAt(point) : -1);
    const std::optional<CellId> cell = m_places.CellAt(point);
    SetHotCheck(cell && m_places.IsOnCheck(*cell, point) ? *cell : CellId{});
    m_state.Tip().Follow(cell);
}

void TreePointer::OnLeave() {
    for (CScrollBar* bar : {&m_places.Vertical(), &m_places.Horizontal()}) {
        if (bar->ClearHot()) m_state.Repaint(bar->Place());
    }
    SetHotHeader(-1);
    SetHotCheck({});
    m_state.Tip().Hide();
}

void TreePointer::SetHotHeader(int column) {
    if (std::exchange(m_hotHeader, column) != column) m_state.Repaint(m_places.Header());
}

void TreePointer::SetHotCheck(CellId cell) {
    const CellId before = std::exchange(m_hotCheck, cell);
    if (before == cell) return;
    if (before.row >= 0) m_state.RepaintRow(before.row);
    if (cell.row >= 0) m_state.RepaintRow(cell.row);
}

void TreePointer::OnLeftUp(POINT point) {
    const Grip grip = m_grip;
    const int column = m_gripColumn;
    const CellId cell = m_gripCell;
    const int row = m_drag.PressedRow();
    const int before = m_drag.Before();
    if (grip == Grip::None) return;
    ::ReleaseCapture();  // which ends the grip
    if (grip == Grip::Divider && m_state.events.widthsChanged) m_state.events.widthsChanged();
    if (grip == Grip::Header) {
        const RECT place = m_places.HeaderCell(column);
        if (::PtInRect(&place, point) && m_state.events.headerClicked) m_state.events.headerClicked(column);
    }
    if (grip == Grip::Check && m_places.CellAt(point) == cell && m_places.IsOnCheck(cell, point)) {
        m_state.ToggleCheck(cell);
    }
    if (grip != Grip::Rows) return;
    if (before >= 0) return m_state.events.rowsDragged(before);
    if (m_places.RowAt(point) != row) return;
    m_state.ChangeSelection([=](RowSelection& selection) { return selection.Click(row, {}); });
}

bool TreePointer::CancelDrag() {
    if (!m_drag.IsUnderWay()) return false;
    ::ReleaseCapture();
    return true;
}

void TreePointer::OnCaptureLost() {
    switch (std::exchange(m_grip, Grip::None)) {
        case Grip::Bar:
            ::KillTimer(m_state.Window(), kTimer);
            m_gripBar->Release();
            m_state.Repaint(m_gripBar->Place());
            return;
        case Grip::Header:
        case Grip::Divider: m_state.Repaint(m_places.Header()); return;
        case Grip::Check: m_state.RepaintRow(m_gripCell.row); return;
        case Grip::Rows:
            ::KillTimer(m_state.Window(), kTimer);
            m_drag.End();
            return;
        case Grip::None: return;
    }
}

void TreePointer::OnTimer() {
    if (m_grip == Grip::Rows) m_drag.OnTimer(m_mouse);
    if (m_grip != Grip::Bar) return;
    ::SetTimer(m_state.Window(), kTimer, kNextRepeat, nullptr);
    m_state.Scroll(*m_gripBar, m_gripBar->Repeat(m_mouse));
}

void TreePointer::OnWheel(int delta, bool isHorizontal) {
    UINT lines = 3;
    ::SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int page = m_places.PageRows();
    const bool isPage = lines == WHEEL_PAGESCROLL || static_cast<int>(lines) > page;
    const int perNotch = isPage ? page : static_cast<int>(lines);
    if (!isHorizontal && ::GetKeyState(VK_SHIFT) >= 0) {
        CScrollBar& bar = m_places.Vertical();
        m_state.Scroll(bar, bar.Range().After(-m_wheel.Turn(delta, perNotch)));
        return;
    }
    // Away from the user is left with Shift, but to tilt the wheel right is right.
    const int pixels = m_sideWheel.Turn(delta, perNotch) * CScrollBar::Thickness();
    CScrollBar& bar = m_places.Horizontal();
    m_state.Scroll(bar, bar.Range().After(isHorizontal ? pixels : -pixels));
}

bool TreePointer::SetCursor() const {
    POINT point{};
    ::GetCursorPos(&point);
    ::ScreenToClient(m_state.Window(), &point);
    const bool isOnAction = IsOnEmptyAction(point);
    if (!isOnAction && m_places.DividerAt(point) < 0) return false;
    ::SetCursor(::LoadCursorA(nullptr, isOnAction ? IDC_HAND : IDC_SIZEWE));
    return true;
}

bool TreePointer::IsOnEmptyAction(POINT point) const {
    const RECT place = m_state.EmptyAction();
    return ::PtInRect(&place, point) != FALSE;
}

Touch TreePointer::TouchOfHeader(int column) const {
    if (m_grip == Grip::Header && m_gripColumn == column) return Touch::Pressed;
    return m_hotHeader == column ? Touch::Hot : Touch::Rest;
}

Touch TreePointer::TouchOfCheck(CellId cell) const {
    if (m_grip == Grip::Check && m_gripCell == cell) return Touch::Pressed;
    return m_hotCheck == cell ? Touch::Hot : Touch::Rest;
}

}  // namespace brennvar
