// Messages that a tree (window class "BrennvarTree") answers to automation and tests. They carry whole numbers
// only, so that they can be sent from another process. Rows and columns count from 0; -1 is the answer to a row or
// column that does not exist.
//
// Texts are read with WM_GETTEXT: the cells of the focused row, joined by tabs; of a list without rows, why it is
// empty. The first WM_GETTEXT after kTreeQueryCell reads that cell's text, as it was when it was asked for.
// WM_VSCROLL and WM_HSCROLL scroll by lines and pages and to both ends.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

inline constexpr char kTreeClass[] = "BrennvarTree";

// A tree's own messages begin here; WM_USER and a few behind it belong to Windows' own controls.
inline constexpr UINT kTreeFirstMessage = WM_USER + 0x100;

enum TreeMessage : UINT {
    kTreeGetRowCount = kTreeFirstMessage,  // rows that are not below a collapsed one
    kTreeGetColumnCount,
    kTreeGetFirstVisibleRow,
    kTreeGetVisibleRowCount,  // rows that fit wholly
    kTreeGetFocusedRow,
    kTreeSelectRow,         // wParam: row, or -1 for none; as a click does, the owner is told. 1: done
    kTreeFocusRow,          // wParam: row; without selecting it. 1: done
    kTreeIsRowSelected,     // wParam: row. 0 or 1
    kTreeGetSelectedCount,  // rows
    kTreeEnsureVisible,     // wParam: row. 1: done
    // wParam: row, lParam: column. The corners of what is seen of the cell, in client coordinates: MAKELPARAM(x,
    // y), -1 when nothing of it is seen.
    kTreeGetCellLeftTop,
    kTreeGetCellRightBottom,
    kTreeGetCheckPosition,  // the same for the middle of the cell's check box; -1 when it has none
    kTreeGetCheck,          // wParam: row, lParam: column. 0 or 1, -1 without a check box
    kTreeToggleCheck,       // the same; as a click does. 1: done
    kTreeGetExpanded,       // wParam: row. 0 or 1, -1 without children
    kTreeSetExpanded,       // wParam: row, lParam: 0 or 1. 1: done
    kTreeGetLevel,          // wParam: row
    kTreeQueryCell,       // wParam: row, lParam: column, or -1 for all cells joined by tabs; row -1 ends the query.
                          // The length of the text
    kTreeGetColumnWidth,  // wParam: column; pixels
    kTreeClickHeader,     // wParam: column; as a click does. 1: done
    kTreeLastMessage = kTreeClickHeader,
};

}  // namespace brennvar
