// Lets a window be sized by its lower right corner only: while the mouse is over the corner the window has a sizing
// frame, and at all other times a fixed one. The client area stays where it is, so that nothing is painted anew.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

class ResizeGrip {
public:
    // The corner: this many pixels, at 96 per inch, in both directions from the end of the client area.
    static constexpr int kZoneSize = 16;
    [[nodiscard]] static bool IsInZone(const RECT& client, POINT point);

    // To be called every 100 ms.
    void Tick(HWND window) { Update(window, IsMouseOver(window)); }
    // The frame as it is to be while the mouse is over the corner, or is not.
    void Update(HWND window, bool isMouseOver);
    // While the user moves or sizes the window its frame is left alone.
    void OnEnterSizeMove() { m_isMoving = true; }
    void OnExitSizeMove() { m_isMoving = false; }
    // True when a press of the mouse at this point of the screen is to size the window.
    [[nodiscard]] static bool IsHit(HWND window, POINT screenPoint);

private:
    [[nodiscard]] static bool IsMouseOver(HWND window);
    static void SetFrame(HWND window, bool on);

    bool m_isMoving = false;
};

}  // namespace brennvar
