#include "ui/WorkArea_win.h"

#include <algorithm>
#include <iterator>

namespace brennvar {
namespace {

// The system can be behind with its work areas: what a program has read of them before the bar came is not always
// read again, and a bar that hides itself lies over them.
RECT BesideTaskBar(const RECT& area) {
    const HWND bar = ::FindWindowA("Shell_TrayWnd", nullptr);
    RECT place{};
    if (!bar || !::IsWindowVisible(bar) || !::GetWindowRect(bar, &place)) return area;
    return BesideBar(area, place);
}

LONGLONG SizeOf(const RECT& rectangle) {
    return LONGLONG{rectangle.right - rectangle.left} * (rectangle.bottom - rectangle.top);
}

// One window may lie on several screens.
bool IsOnScreens(const RECT& rectangle) {
    struct Seen {
        const RECT& rectangle;
        LONGLONG size;
    } seen{rectangle, 0};
    const auto add = [](HMONITOR monitor, HDC, RECT*, LPARAM parameter) -> BOOL {
        Seen& found = *reinterpret_cast<Seen*>(parameter);
        MONITORINFO info{};
        info.cbSize = sizeof info;
        RECT part{};
        if (::GetMonitorInfoA(monitor, &info) && ::IntersectRect(&part, &found.rectangle, &info.rcWork)) {
            found.size += SizeOf(part);
        }
        return TRUE;
    };
    ::EnumDisplayMonitors(nullptr, nullptr, add, reinterpret_cast<LPARAM>(&seen));
    return seen.size >= SizeOf(rectangle);
}

// Where a window is brought to. One that nobody can size has a fixed layout, and what it would lose might be its
// buttons.
RECT PlaceOnScreens(HWND window, const RECT& place) {
    RECT inside = FitInto(place, WorkAreaNear(place));
    if ((::GetWindowLongPtrA(window, GWL_STYLE) & WS_THICKFRAME) == 0) {
        inside.right = inside.left + (place.right - place.left);
        inside.bottom = inside.top + (place.bottom - place.top);
    }
    return inside;
}

BOOL CALLBACK BringOntoScreen(HWND window, LPARAM) {
    char className[16] = {};
    ::GetClassNameA(window, className, sizeof(className));
    // Notices and tips are placed when they are shown, and Windows keeps a maximised window where it belongs.
    if (::lstrcmpA(className, "#32770") != 0 || (::IsZoomed(window) && !::IsIconic(window))) return TRUE;
    if (::IsIconic(window)) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof(placement);
        if (!::GetWindowPlacement(window, &placement) || IsOnScreens(placement.rcNormalPosition)) return TRUE;
        placement.rcNormalPosition = PlaceOnScreens(window, placement.rcNormalPosition);
        placement.showCmd = ::IsWindowVisible(window) ? SW_SHOWMINNOACTIVE : SW_HIDE;
        ::SetWindowPlacement(window, &placement);
        return TRUE;
    }
    RECT place{};
    if (!::GetWindowRect(window, &place) || IsOnScreens(place)) return TRUE;
    const RECT inside = PlaceOnScreens(window, place);
    ::SetWindowPos(window, nullptr, inside.left, inside.top, inside.right - inside.left, inside.bottom - inside.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
    return TRUE;
}

}  // namespace

RECT BesideBar(const RECT& area, const RECT& bar) {
    RECT both{};
    if (!::IntersectRect(&both, &area, &bar)) return area;
    const RECT parts[] = {{area.left, area.top, area.right, bar.top},
                          {area.left, bar.bottom, area.right, area.bottom},
                          {area.left, area.top, bar.left, area.bottom},
                          {bar.right, area.top, area.right, area.bottom}};
    const auto sizeOf = [](const RECT& part) {
        return std::max<LONGLONG>(part.right - part.left, 0) * std::max<LONGLONG>(part.bottom - part.top, 0);
    };
    const RECT largest = *std::max_element(std::begin(parts), std::end(parts),
                                           [&](const RECT& a, const RECT& b) { return sizeOf(a) < sizeOf(b); });
    return sizeOf(largest) > 0 ? largest : area;
}

RECT FitInto(RECT rectangle, const RECT& area) {
    const LONG width = std::min(rectangle.right - rectangle.left, area.right - area.left);
    const LONG height = std::min(rectangle.bottom - rectangle.top, area.bottom - area.top);
    const LONG left = std::clamp(rectangle.left, area.left, area.right - width);
    const LONG top = std::clamp(rectangle.top, area.top, area.bottom - height);
    return {left, top, left + width, top + height};
}

RECT WorkAreaNear(const RECT& rectangle) {
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    if (::GetMonitorInfoA(::MonitorFromRect(&rectangle, MONITOR_DEFAULTTONEAREST), &info)) {
        return BesideTaskBar(info.rcWork);
    }
    return MainWorkArea();
}

RECT MainWorkArea() {
    RECT area{};
    if (!::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0)) {
        area = {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    }
    return BesideTaskBar(area);
}

void BringOntoScreens() {
    ::EnumThreadWindows(::GetCurrentThreadId(), &BringOntoScreen, 0);
}

RECT CenterIn(const RECT& area, SIZE size) {
    const LONG left = (area.left + area.right - size.cx) / 2;
    const LONG top = (area.top + area.bottom - size.cy) / 2;
    return FitInto({left, top, left + size.cx, top + size.cy}, area);
}

}  // namespace brennvar
