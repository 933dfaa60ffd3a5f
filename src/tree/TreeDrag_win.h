// Selected rows on their way to another place, while the mouse button is held: where they would go, shown by a line
// between two rows, and the list that scrolls when the mouse is at its edge or beyond. Positions are in client
// coordinates.
#pragma once

#include "tree/TreeState_win.h"

namespace brennvar {

class TreeDrag {
public:
    explicit TreeDrag(TreeState& state) : m_state(state), m_places(state.Places()) {}

    // Whether the owner lets selected rows be dragged now.
    [[nodiscard]] bool IsPossible() const;
    // The button has gone down on a row. It becomes a drag when the mouse has moved as far as Windows wants it.
    void Press(int row, POINT point);
    [[nodiscard]] int PressedRow() const { return m_row; }
    void Move(POINT point);
    // While rows are dragged, now and then: scrolls.
    void OnTimer(POINT mouse);
    [[nodiscard]] bool IsUnderWay() const { return m_before >= 0; }
    // The rows would go before this one; the number of rows: behind all; -1: nothing is dragged.
    [[nodiscard]] int Before() const { return m_before; }
    void End();

    // The line before the row, as far as it lies in the list.
    [[nodiscard]] RECT Line() const;

private:
    void SetBefore(int row);

    TreeState& m_state;
    const TreePlaces& m_places;
    int m_row = -1;
    POINT m_start{};
    int m_before = -1;
};

}  // namespace brennvar
