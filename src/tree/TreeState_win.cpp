#include "tree/TreeState_win.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "ui/Paint_win.h"

namespace brennvar {

void TreeState::Begin(const TreeSetup& setup, const Look& look, std::span<const TreeColumn> columns,
                      TreeRows& rows) {
    m_setup = setup;
    m_source.Set(rows);
    m_places.SetColumns(columns, setup.hasLevels);
    m_painter = std::make_unique<TreePainter>(look, setup.hasFixedLetters);
    m_tip.Begin(look, *m_painter);
    m_selection.SetMode(setup.selectsMany ? RowSelection::Mode::Multiple : RowSelection::Mode::Single);
}

void TreeState::RepaintRow(int row) const {
    RECT place = m_places.Row(row);
    if (::IntersectRect(&place, &place, &m_places.Rows())) Repaint(place);
}

void TreeState::Refresh() {
    m_tip.HideUnlessSame();
    const int countBefore = m_places.RowCount();
    const int count = m_source.Count();
    m_selection.CutAt(count);
    m_places.LayOut(m_window.ClientRect(), count);
    Repaint();
    if (count != countBefore) Announce(EVENT_OBJECT_REORDER, -1);
}

void TreeState::MoveRowsBehind(int row, int by) {
    m_selection.MoveRowsBehind(row, by);
    m_places.MoveRowsBehind(row, by);
}

void TreeState::SetExpanded(int row, bool isExpanded) {
    const TreeRow state = m_source.Row(row);
    if (!state.hasChildren || state.isExpanded == isExpanded) return;
    const int countBefore = m_places.RowCount();
    m_source.SetExpanded(row, isExpanded);
    MoveRowsBehind(row, m_source.Count() - countBefore);
    Refresh();
    Announce(EVENT_OBJECT_STATECHANGE, row);
}

void TreeState::SetEmpty(const EmptyNote& note) {
    if (std::exchange(m_setup.empty, note) != note && m_places.RowCount() == 0) Repaint();
}

RECT TreeState::EmptyAction() const {
    if (m_places.RowCount() > 0) return {};
    return PlaceOfEmptyAction(m_painter->Font(), m_places.Rows(), m_setup.empty);
}

void TreeState::LayOut() {
    m_places.LayOut(m_window.ClientRect(), m_places.RowCount());
    Repaint();
}

void TreeState::DragColumn(int column, int width) {
    m_places.Columns().Drag(column, width);
    LayOut();
}

void TreeState::FitColumn(int column) {
    int width = Scale(m_places.Column(column).minimalWidth);
    {
        const CTextDc dc(m_painter->Font());
        const int end = m_places.SeenEnd();
        for (int row = m_places.FirstRow(); row < end; ++row) {
            const TreeCell cell = m_source.Cell(row, column);
            const RECT place{0, 0, TreePlaces::kWidestText, TreePainter::RowHeight()};
            const CellPlaces parts =
                TreePainter::PlaceParts(cell, m_places.LevelOf(row), place, m_places.KeepsExpander(column));
            width = std::max(width, m_painter->NeededWidth(dc.Dc(), cell, parts));
        }
    }
    DragColumn(column, width);
    if (events.widthsChanged) events.widthsChanged();
}

void TreeState::WidenFor(int column, const std::string& text) {
    const CTextDc dc(m_painter->Font());
    TreeCell cell;
    cell.text = text;
    const CellPlaces parts = TreePainter::PlaceParts(cell, {}, {0, 0, TreePlaces::kWidestText, 1}, false);
    const int width = m_painter->NeededWidth(dc.Dc(), cell, parts);
    m_places.Columns().Widen(column, std::min(width, TreePlaces::kWidestText));
}

void TreeState::Scroll(CScrollBar& bar, int position) {
    ScrollRange range = bar.Range();
    const int before = std::exchange(range.position, range.Clamp(position));
    const int by = range.position - before;
    if (by == 0) return;
    m_tip.Hide();
    if (bar.SetRange(range)) Repaint(bar.Place());
    const RECT& rows = m_places.Rows();
    if (&bar == &m_places.Horizontal()) {
        Repaint(m_places.Header());
        Repaint(rows);
    } else if (std::abs(by) > m_places.PageRows()) {
        Repaint(rows);
    } else {
        m_window.LookHasChanged();
        ::ScrollWindowEx(Window(), 0, -by * TreePainter::RowHeight(), &rows, &rows, nullptr, nullptr,
                         SW_INVALIDATE);
    }
}

void TreeState::EnsureVisible(int row) {
    if (row < 0 || row >= m_places.RowCount()) return;
    const int first = m_places.FirstRow();
    const int page = m_places.PageRows();
    if (row < first) ScrollTo(row);
    if (row >= first + page) ScrollTo(row - page + 1);
}

void TreeState::ShowFocus(bool isShown) {
    if (std::exchange(m_showsFocus, isShown) != isShown) RepaintRow(FocusedRow());
}

void TreeState::SetSelection(RowRanges rows, int focused) {
    const RowRanges before = m_selection.Rows();
    const int focusedBefore = FocusedRow();
    m_selection.Restore(std::move(rows), focused);
    m_selection.CutAt(m_places.RowCount());
    RepaintSelection(before, focusedBefore);
    AnnounceFocus(focusedBefore);
}

void TreeState::ChangeSelection(const std::function<bool(RowSelection&)>& change) {
    const RowRanges before = m_selection.Rows();
    const int focusedBefore = FocusedRow();
    const bool isOther = change(m_selection);
    RepaintSelection(before, focusedBefore);
    AnnounceFocus(focusedBefore);
    if (!isOther) return;
    Announce(EVENT_OBJECT_SELECTION, FocusedRow());
    if (events.selectionChanged) events.selectionChanged();
}

void TreeState::RepaintSelection(const RowRanges& before, int focusedBefore) const {
    const int end = m_places.SeenEnd();
    for (int row = m_places.FirstRow(); row < end; ++row) {
        const bool hasFocusMoved = focusedBefore != FocusedRow() && (row == focusedBefore || row == FocusedRow());
        if (hasFocusMoved || before.Contains(row) != m_selection.IsSelected(row)) RepaintRow(row);
    }
}

void TreeState::AnnounceFocus(int focusedBefore) const {
    if (FocusedRow() == focusedBefore) return;
    // The window text is that of the focused row.
    ::NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, Window(), OBJID_CLIENT, CHILDID_SELF);
    if (::GetFocus() == Window()) Announce(EVENT_OBJECT_FOCUS, FocusedRow());
}

void TreeState::ExpandByUser(int row, bool isExpanded) {
    const RowRanges before = m_selection.Rows();
    SetExpanded(row, isExpanded);
    // Only selected rows that have gone are a change; others are the same rows with other numbers.
    if (before.Count() != m_selection.Rows().Count() && events.selectionChanged) events.selectionChanged();
}

void TreeState::ToggleCheck(CellId cell) {
    // Looked up anew: it may be another one than the one that was pressed.
    const std::optional<bool> checked = m_source.Cell(cell.row, cell.column).checked;
    if (!checked || !events.checkToggled) return;
    events.checkToggled(cell.row, cell.column, !*checked);
    RepaintRow(cell.row);
    Announce(EVENT_OBJECT_STATECHANGE, cell.row);
}

}  // namespace brennvar
