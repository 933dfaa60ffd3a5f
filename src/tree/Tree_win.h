// The list of the program: rows with columns, pictures and check boxes, flat or with children below parents,
// painted by us. It holds no rows but asks a row source for those that are seen, so that a million rows are as
// quick as ten. Automation and screen readers: tree/TreeMessages_win.h.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "controls/ScrollBar_win.h"
#include "tree/ColumnLayout.h"
#include "tree/RowSelection.h"
#include "tree/TreePainter_win.h"
#include "tree/TreeSource_win.h"
#include "ui/Look_win.h"
#include "ui/StripBuffer_win.h"
#include "ui/Window_win.h"

namespace brennvar {

class CCellTip;

struct TreeSetup {
    HWND parent = nullptr;
    int id = 0;
    bool selectsMany = false;
    bool hasLevels = false;  // rows may have children: the first column has room for their expand marks
    bool isZebra = true;
    std::string emptyText{};  // why there are no rows and what to do about it
};

// What the user did. Each may be empty. The tree is in order before one is called: it may refresh the tree or show
// a dialog.
struct TreeEvents {
    std::function<void()> selectionChanged;  // not for changes that the owner made
    // The left button goes down on a cell, the second press of a double click included. True: it is dealt with, and
    // the row is neither selected nor opened.
    std::function<bool(int row, int column)> cellClicked;
    std::function<void(int row, int column, bool isChecked)> checkToggled;  // as the user wants it
    std::function<void(int row)> opened;                                    // double click or Enter
    std::function<void(int row, POINT screen)> contextMenu;                 // row: -1 beside all rows
    std::function<void(int column)> headerClicked;
    std::function<void()> widthsChanged;  // the user has dragged a divider
    std::function<void()> refreshWanted;  // F5
    std::function<void()> findWanted;     // Ctrl+F
};

class CTree : public CWindow {
public:
    CTree();
    ~CTree() override;

    TreeEvents events;

    // Borrows the fonts of the look and the row source for the life of the window.
    [[nodiscard]] bool Create(const TreeSetup& setup, const Look& look, std::span<const TreeColumn> columns,
                              TreeRows& rows);

    // The rows have changed: all are painted anew, the scroll position and the numbers of the selected rows stay
    // as far as there are so many. Owners who know where rows went select them anew.
    void Refresh();
    // So many rows have come directly behind this one, or have gone from there (below zero): the selection and what
    // is in sight go with their rows. Followed by Refresh.
    void MoveRowsBehind(int row, int by);
    // One row looks different; there are as many as before.
    void RefreshRow(int row) const;
    void SetEmptyText(const std::string& text);

    // None of these calls an event.
    [[nodiscard]] const RowRanges& SelectedRows() const { return m_selection.Rows(); }
    [[nodiscard]] int SelectedRow() const;  // the first one, -1: none
    [[nodiscard]] int FocusedRow() const { return m_selection.Focused(); }
    void SelectRow(int row);  // only this one; -1: none
    void SetSelection(RowRanges rows, int focused);

    [[nodiscard]] int FirstVisibleRow() const { return m_vertical.Range().position; }
    void ScrollTo(int firstRow);
    [[nodiscard]] bool IsAtEnd() const { return FirstVisibleRow() >= m_vertical.Range().LastPosition(); }
    void EnsureVisible(int row);
    void SetExpanded(int row, bool isExpanded);

    // The arrow in the header; column -1: none. Sorting itself is the owner's.
    void SetSortMark(int column, bool isAscending);
    // At 96 pixels per inch, for the user's settings. Too few widths leave the rest as it is.
    [[nodiscard]] std::vector<int> ColumnWidths() const;
    void SetColumnWidths(std::span<const int> widths);
    // Widens columns, but for those that take room, until they hold their titles, the texts of TreeColumn::longest
    // and, within reason, what a sample of the rows holds. None gets narrower.
    void FitToContent();
    // The column shall hold this text uncut; shown with the next Refresh. For columns that take room.
    void WidenFor(int column, const std::string& text);

    // The selected rows to the clipboard, one line each, cells separated by tabs; at most kMostCopiedRows.
    void CopySelection() const;
    static constexpr int kMostCopiedRows = 100'000;
    [[nodiscard]] std::string RowText(int row) const;

    // Client coordinates; empty when nothing of the cell is seen.
    [[nodiscard]] RECT CellRect(int row, int column) const;
    [[nodiscard]] int RowAt(POINT point) const;  // -1: none

protected:
    bool OnCreate() override;
    void OnDestroy() override;
    void OnSize(int width, int height) override;
    void OnTimer(UINT_PTR id) override;
    void OnFocus(bool hasFocus) override;
    void OnMouseMove(POINT point, UINT keys) override;
    void OnMouseLeave() override;
    void OnLeftDown(POINT point, UINT keys) override;
    void OnLeftUp(POINT point, UINT keys) override;
    void OnDoubleClick(POINT point, UINT keys) override;
    void OnCaptureLost() override;
    void OnWheel(int delta, bool isHorizontal) override;
    bool OnKeyDown(UINT key) override;
    bool OnChar(char character) override;
    void OnContextMenu(POINT point) override;
    void OnPaint(HDC dc, const RECT& invalid) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct CellId {
        int row = -1;
        int column = -1;
        friend bool operator==(const CellId&, const CellId&) = default;
    };
    // What the held mouse button does.
    enum class Grip { None, VerticalBar, HorizontalBar, Divider, Header, Check };

    // Places (Tree.cpp)
    void LayOut();
    void LayOutBars(const RECT& inner);
    [[nodiscard]] RECT RowRect(int row) const;            // also of rows out of sight
    [[nodiscard]] RECT WholeCellRect(CellId cell) const;  // also of cells out of sight
    [[nodiscard]] RECT HeaderCellRect(int column) const;
    [[nodiscard]] std::optional<CellId> CellAt(POINT point) const;
    [[nodiscard]] CellPlaces PartsOf(CellId cell) const;
    [[nodiscard]] int PageRows() const { return m_vertical.Range().page; }
    // Behind the last row of which something is seen. Sums stay below the largest number of rows there can be.
    [[nodiscard]] int SeenEnd() const {
        return FirstVisibleRow() + std::min(m_rowCount - FirstVisibleRow(), PageRows() + 1);
    }

    // Columns (TreeFit.cpp)
    [[nodiscard]] int FittingWidth(HDC dc, int column) const;

    // Scrolling (Tree.cpp)
    void ScrollVertically(int position);
    void ScrollHorizontally(int position);
    void RepaintBar(const CScrollBar& bar) const { Repaint(bar.Place()); }

    // Selection (Tree.cpp)
    void RepaintSelection(const RowRanges& before, int focusedBefore) const;
    // As the user does it: the change tells whether other rows are selected now, and the owner hears of it.
    void ChangeSelection(const std::function<bool(RowSelection&)>& change);
    void AnnounceFocus(int focusedBefore) const;
    void ExpandByUser(int row, bool isExpanded);

    // Painting (TreePaint.cpp)
    void PaintWindow();
    void PaintRows(HDC dc, const RECT& invalid);
    void PaintRow(HDC dc, int row, const RECT& place, const RECT& invalid);
    void PaintHeader(HDC dc, const RECT& invalid);
    [[nodiscard]] Touch TouchOfCheck(CellId cell) const;

    // Mouse (TreeMouse.cpp)
    void PressRow(POINT point, UINT keys, bool isSecond);
    [[nodiscard]] bool PressBar(POINT point);
    [[nodiscard]] bool PressHeader(POINT point, bool isSecond);
    void DragBar(POINT point);
    void RepeatBar();
    void SetHotCell(std::optional<CellId> cell, POINT point);
    void SetHotHeader(int column);
    void FitColumn(int column);
    void ToggleCheck(CellId cell);
    void BeginGrip(Grip grip);
    [[nodiscard]] std::optional<LRESULT> OnSetCursor() const;
    void OnRightDown(POINT point);
    void UpdateTip(std::optional<CellId> cell);
    void ShowTip();
    void HideTip();
    void CheckTip();

    // Keyboard (TreeKeys.cpp)
    bool OnControlKey(UINT key);
    void MoveFocusTo(int row);
    void MoveFocusBy(int rows);
    void GoLeft();
    void GoRight();
    void PressSpace();
    [[nodiscard]] std::optional<LRESULT> OnGetDialogCode(LPARAM lParam) const;

    // Automation (TreeAutomation.cpp)
    [[nodiscard]] std::optional<LRESULT> OnTreeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> OnRowMessage(UINT message, int row, LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> OnCellMessage(UINT message, CellId cell);
    [[nodiscard]] LRESULT QueryCell(CellId cell);
    [[nodiscard]] std::string WindowText() const;

    TreeSetup m_setup;
    std::vector<TreeColumn> m_columns;
    TreeSource m_source;
    int m_rowCount = 0;  // when the rows were last looked at
    std::unique_ptr<TreePainter> m_painter;
    std::unique_ptr<ScrollPictures> m_pictures;
    std::unique_ptr<CCellTip> m_tip;
    CStripBuffer m_buffer;

    RECT m_header{};  // inside the frame
    RECT m_rows{};
    RECT m_corner{};
    ColumnLayout m_layout;
    CScrollBar m_vertical{true};     // rows
    CScrollBar m_horizontal{false};  // pixels
    int m_wheelRest = 0;             // of a notch
    int m_sideWheelRest = 0;

    RowSelection m_selection;
    bool m_showsFocus = false;  // the user works with the keyboard
    std::string m_typed;        // lower case, what the user looks for by typing
    ULONGLONG m_typedAt = 0;    // ms since the system's start
    int m_sortColumn = -1;
    bool m_isAscending = true;

    Grip m_grip = Grip::None;
    POINT m_mouse{};
    int m_gripColumn = -1;  // whose header or divider is held
    int m_gripOffset = 0;   // from the divider to the mouse
    CellId m_gripCell;      // whose check box is held
    int m_hotHeader = -1;
    CellId m_hotCheck;
    CellId m_tipCell;  // the one below the mouse

    std::optional<std::string> m_query;
};

}  // namespace brennvar
