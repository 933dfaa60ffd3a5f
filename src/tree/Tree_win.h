// The list of the program: rows with columns, pictures and check boxes, flat or with children below parents,
// painted by us. It holds no rows but asks a row source for those that are seen, so that a million rows are as
// quick as ten. Automation and screen readers: tree/TreeMessages_win.h.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "tree/TreeAccessible_win.h"
#include "tree/TreeAutomation_win.h"
#include "tree/TreeCanvas_win.h"
#include "tree/TreeEvents_win.h"
#include "tree/TreeFit_win.h"
#include "tree/TreeKeyboard_win.h"
#include "tree/TreePointer_win.h"
#include "tree/TreeState_win.h"
#include "tree/TreeText_win.h"
#include "ui/Look_win.h"
#include "ui/Window_win.h"

namespace brennvar {

class CTree : public CWindow {
public:
    TreeEvents events;

    // Borrows the fonts of the look and the row source for the life of the window.
    [[nodiscard]] bool Create(const TreeSetup& setup, const Look& look, std::span<const TreeColumn> columns,
                              TreeRows& rows);

    // The rows have changed: all are painted anew, the scroll position and the numbers of the selected rows stay
    // as far as there are so many. Owners who know where rows went select them anew.
    void Refresh();
    // The same where they look different at most, and are the same ones: what the user drags stays in the hand.
    void RefreshLooks();
    // So many rows have come directly behind this one, or have gone from there (below zero): the selection and what
    // is in sight go with their rows. Followed by Refresh.
    void MoveRowsBehind(int row, int by) { m_state.MoveRowsBehind(row, by); }
    // One row looks different; there are as many as before.
    void RefreshRow(int row) const { m_state.RepaintRow(row); }
    // Whether rows may have children; shown with the next Refresh.
    void SetHasLevels(bool hasLevels) { m_state.Places().SetHasLevels(hasLevels); }
    void SetEmpty(const EmptyNote& note) { m_state.SetEmpty(note); }

    // None of these calls an event.
    [[nodiscard]] const RowRanges& SelectedRows() const { return m_state.Selection().Rows(); }
    [[nodiscard]] int SelectedRow() const;  // the first one, -1: none
    [[nodiscard]] int FocusedRow() const { return m_state.FocusedRow(); }
    void SelectRow(int row);  // only this one; -1: none
    void SetSelection(RowRanges rows, int focused) { m_state.SetSelection(std::move(rows), focused); }

    [[nodiscard]] int FirstVisibleRow() const { return m_state.Places().FirstRow(); }
    void ScrollTo(int firstRow) { m_state.ScrollTo(firstRow); }
    [[nodiscard]] bool IsAtEnd() const {
        return FirstVisibleRow() >= m_state.Places().Vertical().Range().LastPosition();
    }
    void EnsureVisible(int row) { m_state.EnsureVisible(row); }
    void SetExpanded(int row, bool isExpanded) { m_state.SetExpanded(row, isExpanded); }

    // The arrow in the header; column -1: none. Sorting itself is the owner's.
    void SetSortMark(int column, bool isAscending) { m_canvas.SetSortMark(column, isAscending); }
    // At 96 pixels per inch, for the user's settings. Too few widths leave the rest as it is.
    [[nodiscard]] std::vector<int> ColumnWidths() const;
    void SetColumnWidths(std::span<const int> widths);
    void FitToContent() { brennvar::FitToContent(m_state); }
    // The column shall hold this text uncut; shown with the next Refresh. For columns that take room.
    void WidenFor(int column, const std::string& text);

    // The selected rows to the clipboard, one line each, cells separated by tabs; at most kMostCopiedRows.
    void CopySelection() const { brennvar::CopySelection(m_state); }
    static constexpr int kMostCopiedRows = brennvar::kMostCopiedRows;

    // Client coordinates; empty when nothing of the cell is seen.
    [[nodiscard]] RECT CellRect(int row, int column) const { return m_state.Places().SeenCell({row, column}); }
    [[nodiscard]] int RowAt(POINT point) const { return m_state.Places().RowAt(point); }  // -1: none

    void TellAccessible(AccessibleThing& thing) const override { m_accessible.Tell(thing); }
    [[nodiscard]] AccessibleParts* GetAccessibleParts() override { return &m_accessible; }
    [[nodiscard]] bool TellParts(PictureParts& parts) const override { return TellWhole(parts); }

protected:
    bool OnCreate() override;
    void OnDestroy() override { m_state.Tip().Hide(); }
    void OnSize(int, int) override { m_state.LayOut(); }
    void OnTimer(UINT_PTR id) override;
    void OnFocus(bool hasFocus) override { m_keyboard.OnFocus(hasFocus); }
    void OnMouseMove(POINT point, UINT) override { m_pointer.OnMove(point); }
    void OnMouseLeave() override { m_pointer.OnLeave(); }
    void OnLeftDown(POINT point, UINT keys) override { m_pointer.OnLeftDown(point, keys); }
    void OnLeftUp(POINT point, UINT) override { m_pointer.OnLeftUp(point); }
    void OnDoubleClick(POINT point, UINT keys) override { m_pointer.OnDoubleClick(point, keys); }
    void OnCaptureLost() override { m_pointer.OnCaptureLost(); }
    void OnWheel(int delta, bool isHorizontal) override { m_pointer.OnWheel(delta, isHorizontal); }
    bool OnKeyDown(UINT key) override;
    bool OnChar(char character) override { return m_keyboard.OnChar(character); }
    void OnContextMenu(POINT point) override;
    void OnPaint(HDC dc, const RECT& invalid) override { m_canvas.Paint(dc, invalid); }
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    [[nodiscard]] LRESULT DialogCode(const MSG* message) const;

    TreeState m_state{*this, events};
    TreePointer m_pointer{m_state};
    TreeKeyboard m_keyboard{m_state};
    TreeCanvas m_canvas{m_state, m_pointer};
    TreeAutomation m_automation{m_state};
    TreeAccessible m_accessible{m_state};
};

}  // namespace brennvar
