// A report list that holds no rows: it asks a row source for the cells that are visible. A short text stands in the
// middle of a list without rows.
#pragma once

#include <span>
#include <string>

#include "base/Windows_win.h"
// windows.h must stand before commctrl.h.
#include <commctrl.h>

namespace brennvar {

class ListRows {
public:
    virtual ~ListRows() = default;
    [[nodiscard]] virtual int RowCount() const = 0;
    // 0 <= row < RowCount().
    [[nodiscard]] virtual std::string CellText(int row, int column) const = 0;
};

struct ListColumn {
    std::string title;
    int width = 0;           // at 96 pixels per inch
    bool isNumber = false;   // aligned right
    bool takesRoom = false;  // one column takes the room that is left; width is its least one
};

class CListView {
public:
    // A child window of the given parent, which passes its notices and the colour of the empty text on to the two
    // functions below. The row source is borrowed for the life of the window.
    void Create(HWND parent, int listId, int emptyTextId, HFONT font, std::span<const ListColumn> columns,
                const ListRows& rows);

    void Place(const RECT& place);
    // Call it after the rows have changed. The scroll position stays; the row that was selected is chosen anew by
    // the caller, who knows where it went.
    void Refresh();
    void SetEmptyText(const std::string& text) const;

    [[nodiscard]] HWND Window() const { return m_list; }
    [[nodiscard]] int SelectedRow() const;  // -1: none
    void SelectRow(int row) const;          // -1: none

    LRESULT OnNotify(NMHDR& header) const;
    [[nodiscard]] HBRUSH OnControlColor(HDC dc, HWND control) const;

private:
    void FitWideColumn();

    HWND m_list = nullptr;
    HWND m_emptyText = nullptr;
    const ListRows* m_rows = nullptr;
    int m_wideColumn = -1;      // the one that takes the room
    int m_wideColumnLeast = 0;  // pixels
    int m_otherWidth = 0;       // pixels of all others together
    LONG m_fittedWidth = 0;     // of the list when the column was fitted last
};

}  // namespace brennvar
