// What the keyboard does to a tree.
#pragma once

#include "tree/TreeState_win.h"
#include "tree/TypedSearch.h"

namespace brennvar {

class TreeKeyboard {
public:
    explicit TreeKeyboard(TreeState& state) : m_state(state), m_places(state.Places()) {}

    void OnFocus(bool hasFocus);
    // True: dealt with.
    [[nodiscard]] bool OnKeyDown(UINT key);
    [[nodiscard]] bool OnChar(char character);
    // The answer to WM_GETDLGCODE; the message that the dialog asks about, or null.
    [[nodiscard]] LRESULT DialogCode(const MSG* message) const;

private:
    [[nodiscard]] bool HasEmptyAction() const;
    [[nodiscard]] bool OnControlKey(UINT key);
    void MoveFocusTo(int row);
    void MoveFocusBy(int rows);
    void ScrollSideways(int pixels);
    void GoLeft();
    void GoRight();
    void PressSpace();

    TreeState& m_state;
    TreePlaces& m_places;
    TypedSearch m_typed;
};

}  // namespace brennvar
