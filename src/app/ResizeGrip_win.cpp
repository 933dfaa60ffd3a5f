#include "app/ResizeGrip_win.h"

#include "ui/Fonts_win.h"

namespace brennvar {
namespace {

[[nodiscard]] bool HasSizingFrame(HWND window) {
    return (::GetWindowLongPtrA(window, GWL_STYLE) & WS_THICKFRAME) != 0;
}

[[nodiscard]] bool IsInZoneOf(HWND window, POINT screenPoint) {
    RECT client{};
    ::GetClientRect(window, &client);
    ::ScreenToClient(window, &screenPoint);
    return ResizeGrip::IsInZone(client, screenPoint);
}

}  // namespace

bool ResizeGrip::IsInZone(const RECT& client, POINT point) {
    const int size = Scale(kZoneSize);
    const RECT zone{client.right - size, client.bottom - size, client.right, client.bottom};
    return ::PtInRect(&zone, point) != FALSE;
}

bool ResizeGrip::IsMouseOver(HWND window) {
    POINT mouse{};
    return ::GetCursorPos(&mouse) && ::IsWindowEnabled(window) && IsInZoneOf(window, mouse) &&
           ::GetAncestor(::WindowFromPoint(mouse), GA_ROOT) == window;
}

void ResizeGrip::Update(HWND window, bool isMouseOver) {
    if (m_isMoving || ::IsIconic(window) || ::IsZoomed(window)) return;
    if (isMouseOver != HasSizingFrame(window)) SetFrame(window, isMouseOver);
}

bool ResizeGrip::IsHit(HWND window, POINT screenPoint) {
    return !::IsZoomed(window) && HasSizingFrame(window) && IsInZoneOf(window, screenPoint);
}

void ResizeGrip::SetFrame(HWND window, bool on) {
    const LONG_PTR old = ::GetWindowLongPtrA(window, GWL_STYLE);
    const LONG_PTR style = on ? old | WS_THICKFRAME : old & ~static_cast<LONG_PTR>(WS_THICKFRAME);
    ::SetWindowLongPtrA(window, GWL_STYLE, style);
    // Nothing of the frame is seen: the window answers WM_NCCALCSIZE with its whole place.
    ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                   SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOREDRAW);
}

}  // namespace brennvar
