#include "tray/NotifyBox.h"

namespace brennvar {
namespace {

constexpr char kNotificationArea[] = "TrayNotifyWnd";
constexpr char kTaskbarClock[] = "TrayClockWClass";
// A clock that ends so near to the bar's end stands beside the icons, else above them.
constexpr int kClockTolerance = 5;

// The stretch of a bar that the icons most likely take, from its far end, and that of a screen without a bar.
constexpr int kIconsFrom = 100;
constexpr int kIconsTo = 16;
constexpr int kLeastBarLength = 400;  // no notification area is that long
constexpr int kCornerWidth = 150;
constexpr int kCornerHeight = 30;

PixelBox InBarWindow(PixelBox box, const std::vector<TaskbarFacts::Child>& children) {
    for (const TaskbarFacts::Child& child : children) {
        if (child.className == kNotificationArea) return child.box;
        if (child.className != kTaskbarClock) continue;
        if (child.box.bottom >= box.bottom - kClockTolerance) {
            box.right = child.box.left;
        } else {
            box.top = child.box.bottom;
        }
        break;
    }
    return box;
}

PixelBox FarEnd(const PixelBox& bar, bool isUpright) {
    if (isUpright) return {bar.left, bar.bottom - kIconsFrom, bar.right, bar.bottom - kIconsTo};
    return {bar.right - kIconsFrom, bar.top, bar.right - kIconsTo, bar.bottom};
}

PixelBox InReportedBar(const TaskbarFacts::Bar& bar) {
    return FarEnd(bar.box, bar.edge == ScreenEdge::Left || bar.edge == ScreenEdge::Right);
}

}  // namespace

PixelBox FindNotifyBox(const TaskbarFacts& facts) {
    if (facts.window) return InBarWindow(*facts.window, facts.children);
    if (facts.reported) return InReportedBar(*facts.reported);
    const PixelBox& area = facts.workArea;
    return {area.right - kCornerWidth, area.bottom - kCornerHeight, area.right, area.bottom};
}

PixelBox FindIcons(const PixelBox& notifyBox) {
    if (notifyBox.Width() >= kLeastBarLength) return FarEnd(notifyBox, false);
    if (notifyBox.Height() >= kLeastBarLength) return FarEnd(notifyBox, true);
    return notifyBox;
}

}  // namespace brennvar
