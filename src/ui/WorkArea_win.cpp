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

RECT CenterIn(const RECT& area, SIZE size) {
    const LONG left = (area.left + area.right - size.cx) / 2;
    const LONG top = (area.top + area.bottom - size.cy) / 2;
    return FitInto({left, top, left + size.cx, top + size.cy}, area);
}

}  // namespace brennvar
