#include "app/WindowPlacement_win.h"

#include <algorithm>

#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

constexpr char kLeft[] = "WindowLeft";
constexpr char kTop[] = "WindowTop";
constexpr char kRight[] = "WindowRight";
constexpr char kBottom[] = "WindowBottom";
constexpr char kMaximised[] = "WindowMaximised";

// No screen reaches further; sums of such values cannot overflow.
constexpr LONG kFarthest = 32767;

}  // namespace

std::optional<WindowPlacement> ReadWindowPlacement(const UserValues& values) {
    WindowPlacement placement;
    const struct {
        const char* name;
        LONG* part;
    } parts[] = {{kLeft, &placement.place.left},
                 {kTop, &placement.place.top},
                 {kRight, &placement.place.right},
                 {kBottom, &placement.place.bottom}};
    for (const auto& [name, part] : parts) {
        std::uint32_t value = 0;
        if (!values.ReadUserValue(name, value)) return std::nullopt;
        *part = std::clamp(static_cast<LONG>(value), -kFarthest, kFarthest);
    }
    std::uint32_t maximised = 0;
    placement.isMaximised = values.ReadUserValue(kMaximised, maximised) && maximised != 0;
    return placement;
}

void WriteWindowPlacement(HWND window, UserValues& values) {
    ::WINDOWPLACEMENT now{};
    now.length = sizeof(now);
    if (!::GetWindowPlacement(window, &now)) return;
    // These coordinates count from the work area and not from the screen.
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    RECT place = now.rcNormalPosition;
    if (::GetMonitorInfoA(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &monitor)) {
        ::OffsetRect(&place, monitor.rcWork.left - monitor.rcMonitor.left,
                     monitor.rcWork.top - monitor.rcMonitor.top);
    }
    const bool isMaximised =
        ::IsZoomed(window) || (::IsIconic(window) && (now.flags & WPF_RESTORETOMAXIMIZED) != 0);
    values.WriteUserValue(kLeft, static_cast<std::uint32_t>(place.left));
    values.WriteUserValue(kTop, static_cast<std::uint32_t>(place.top));
    values.WriteUserValue(kRight, static_cast<std::uint32_t>(place.right));
    values.WriteUserValue(kBottom, static_cast<std::uint32_t>(place.bottom));
    values.WriteUserValue(kMaximised, isMaximised ? 1 : 0);
}

RECT FitPlacement(const RECT& place, SIZE least) {
    RECT wanted = place;
    wanted.right = std::max(wanted.right, wanted.left + least.cx);
    wanted.bottom = std::max(wanted.bottom, wanted.top + least.cy);
    return FitInto(wanted, WorkAreaNear(wanted));
}

}  // namespace brennvar
