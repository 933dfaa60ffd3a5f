#include "app/ResizeGrip.h"

#include "ui/Fonts.h"

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
    // The two frames differ in width: the window grows or shrinks around its client area.
    RECT place{};
    ::GetClientRect(window, &place);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    ::AdjustWindowRectEx(&place, static_cast<DWORD>(style), FALSE,
                         static_cast<DWORD>(::GetWindowLongPtrA(window, GWL_EXSTYLE)));
    ::SetWindowLongPtrA(window, GWL_STYLE, style);
    ::SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                   SWP_FRAMECHANGED | SWP_NOZORDER | SWP_NOACTIVATE);
}

void ResizeGrip::Paint(HWND window, HDC dc) {
    if (::IsZoomed(window)) return;
    RECT client{};
    ::GetClientRect(window, &client);
    const int size = Scale(kZoneSize);
    RECT zone{client.right - size, client.bottom - size, client.right, client.bottom};
    ::DrawFrameControl(dc, &zone, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
}

}  // namespace brennvar
