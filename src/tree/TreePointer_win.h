// What the mouse does to a tree: it presses and drags rows, presses check boxes, headers, dividers and scroll bars,
// and lights up what is below it. Positions are in client coordinates.
#pragma once

#include <optional>

#include "controls/WheelSteps.h"
#include "tree/TreeDrag_win.h"
#include "tree/TreeState_win.h"

namespace brennvar {

class TreePointer {
public:
    static constexpr UINT_PTR kTimer = 1;  // of the tree's window, while a bar or rows are held

    explicit TreePointer(TreeState& state) : m_state(state), m_places(state.Places()), m_drag(state) {}

    // keys: MK_ flags.
    void OnLeftDown(POINT point, UINT keys);
    void OnDoubleClick(POINT point, UINT keys);
    void OnLeftUp(POINT point);
    void OnRightDown(POINT point);
    void OnMove(POINT point);
    void OnLeave();
    void OnCaptureLost();
    void OnTimer();
    // Units of WHEEL_DELTA, above zero away from the user.
    void OnWheel(int delta, bool isHorizontal);
    // True: it has been set.
    [[nodiscard]] bool SetCursor() const;

    // Of rows that are being dragged; false: there are none.
    bool CancelDrag();
    [[nodiscard]] const TreeDrag& Drag() const { return m_drag; }

    [[nodiscard]] Touch TouchOfHeader(int column) const;
    [[nodiscard]] Touch TouchOfCheck(CellId cell) const;

private:
    // What the held mouse button does.
    enum class Grip { None, Bar, Divider, Header, Check, Rows };

    void BeginGrip(Grip grip);
    // True: the point belongs to this.
    [[nodiscard]] bool PressBar(POINT point);
    [[nodiscard]] bool PressHeader(POINT point, bool isSecond);
    [[nodiscard]] bool IsOnEmptyAction(POINT point) const;
    void PressRow(POINT point, UINT keys, bool isSecond);
    [[nodiscard]] bool PressPart(CellId cell, POINT point);
    void SetHotHeader(int column);
    void SetHotCheck(CellId cell);

    TreeState& m_state;
    TreePlaces& m_places;
    TreeDrag m_drag;
    Grip m_grip = Grip::None;
    POINT m_mouse{};
    CScrollBar* m_gripBar = nullptr;
    int m_gripColumn = -1;  // whose header or divider is held
    int m_gripOffset = 0;   // from the divider to the mouse
    CellId m_gripCell;      // whose check box is held
    int m_hotHeader = -1;
    CellId m_hotCheck;
    WheelSteps m_wheel;
    WheelSteps m_sideWheel;
};

}  // namespace brennvar
