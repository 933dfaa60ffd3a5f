#include "tray/TrayWindow_win.h"

#include "tray/NotifyBox_win.h"

namespace brennvar {
namespace {

bool AnimatesWindows() {
    ANIMATIONINFO info{};
    info.cbSize = sizeof(info);
    return ::SystemParametersInfoA(SPI_GETANIMATION, sizeof(info), &info, 0) && info.iMinAnimate != 0;
}

void SetVisibleStyle(HWND window, bool isVisible) {
    const LONG_PTR old = ::GetWindowLongPtrA(window, GWL_STYLE);
    const LONG_PTR style = isVisible ? old | WS_VISIBLE : old & ~static_cast<LONG_PTR>(WS_VISIBLE);
    if (style != old) ::SetWindowLongPtrA(window, GWL_STYLE, style);
}

}  // namespace

DesktopAnimation DesktopAnimation::Current() {
    return {.isOn = &AnimatesWindows, .run = [](HWND window, const RECT& from, const RECT& to) {
                ::DrawAnimatedRects(window, IDANI_CAPTION, &from, &to);
            }};
}

void MinimiseToTray(HWND window, const DesktopAnimation& animation) {
    if (animation.isOn()) {
        RECT place{};
        ::GetWindowRect(window, &place);
        animation.run(window, place, GetTaskbarNotifyRect());
    }
    ::ShowWindow(window, SW_HIDE);
    SetVisibleStyle(window, false);
}

void RestoreFromTray(HWND window, const DesktopAnimation& animation) {
    const bool wasHidden = !::IsWindowVisible(window);
    if (wasHidden && animation.isOn()) {
        RECT place{};
        ::GetWindowRect(window, &place);
        animation.run(window, GetTaskbarNotifyRect(), place);
    }
    if (::GetAncestor(window, GA_PARENT) != ::GetDesktopWindow()) ::SetParent(window, nullptr);
    ::ShowWindow(window, ::IsIconic(window) ? SW_RESTORE : SW_SHOW);
    SetVisibleStyle(window, true);
    if (wasHidden) {
        ::RedrawWindow(window, nullptr, nullptr,
                       RDW_FRAME | RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    }
    // While a dialog is open over the window, the window cannot take the keyboard.
    const HWND active = ::GetLastActivePopup(window);
    ::SetActiveWindow(active);
    ::SetForegroundWindow(active);
}

}  // namespace brennvar
