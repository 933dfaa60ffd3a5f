// Which rows of a list are selected and which one has the focus, and what clicks and keys make of it. Each function
// that the user's hand is behind tells whether the set of selected rows has changed.
#pragma once

#include "tree/RowRanges.h"

namespace brennvar {

class RowSelection {
public:
    enum class Mode { Single, Multiple };
    // Ctrl and Shift as they are held; without effect in a list of which one row can be selected.
    struct Keys {
        bool control = false;
        bool shift = false;
    };

    void SetMode(Mode mode) { m_mode = mode; }
    [[nodiscard]] bool IsMultiple() const { return m_mode == Mode::Multiple; }

    bool Click(int row, Keys keys);
    // An arrow key or its like: Ctrl moves the focus alone.
    bool MoveTo(int row, Keys keys);
    bool FocusOnly(int row);
    bool ToggleFocused();
    bool SelectAll(int rowCount);
    // Only this row, with the focus; -1: none, and no focus.
    bool SelectOnly(int row);
    // What somebody has remembered. The focus may lie on a row that is not selected, or be -1.
    void Restore(RowRanges rows, int focused);
    // So many rows have come directly behind this one, or have gone from there (below zero). A focus that has gone
    // falls on this row.
    void MoveRowsBehind(int row, int by);
    // Rows from this one on have gone.
    bool CutAt(int rowCount);

    [[nodiscard]] const RowRanges& Rows() const { return m_rows; }
    [[nodiscard]] bool IsSelected(int row) const { return m_rows.Contains(row); }
    [[nodiscard]] int Focused() const { return m_focused; }  // -1: none

private:
    bool SelectFromAnchor(int row, bool keepOthers);

    Mode m_mode = Mode::Single;
    RowRanges m_rows;
    int m_focused = -1;
    int m_anchor = -1;  // where a range that Shift makes begins
};

}  // namespace brennvar
