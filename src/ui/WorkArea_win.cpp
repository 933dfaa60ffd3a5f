#include "ui/WorkArea_win.h"

#include <algorithm>

namespace brennvar {

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
    if (::GetMonitorInfoA(::MonitorFromRect(&rectangle, MONITOR_DEFAULTTONEAREST), &info)) return info.rcWork;
    return MainWorkArea();
}

RECT MainWorkArea() {
    RECT area{};
    if (!::SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0)) {
        area = {0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    }
    return area;
}

RECT CenterIn(const RECT& area, SIZE size) {
    const LONG left = (area.left + area.right - size.cx) / 2;
    const LONG top = (area.top + area.bottom - size.cy) / 2;
    return FitInto({left, top, left + size.cx, top + size.cy}, area);
}

}  // namespace brennvar
