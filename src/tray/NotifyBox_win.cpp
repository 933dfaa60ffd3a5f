#include "tray/NotifyBox_win.h"

// windows.h must stand before shellapi.h.
#include <shellapi.h>

#include "tray/NotifyBox.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

PixelBox BoxOf(const RECT& place) {
    return {static_cast<int>(place.left), static_cast<int>(place.top), static_cast<int>(place.right),
            static_cast<int>(place.bottom)};
}

RECT PlaceOf(const PixelBox& box) {
    return {box.left, box.top, box.right, box.bottom};
}

BOOL CALLBACK AddChild(HWND window, LPARAM list) noexcept {
    char name[64] = {};
    ::GetClassNameA(window, name, sizeof(name));
    RECT place{};
    ::GetWindowRect(window, &place);
    try {
        reinterpret_cast<std::vector<TaskbarFacts::Child>*>(list)->push_back(
            {.className = name, .box = BoxOf(place)});
    } catch (...) {
        return FALSE;  // without memory the whole bar has to do
    }
    return TRUE;
}

ScreenEdge EdgeOf(UINT edge) {
    switch (edge) {
        case ABE_LEFT: return ScreenEdge::Left;
        case ABE_TOP: return ScreenEdge::Top;
        case ABE_RIGHT: return ScreenEdge::Right;
        default: return ScreenEdge::Bottom;
    }
}

TaskbarFacts ReadTaskbar() {
    TaskbarFacts facts;
    facts.workArea = BoxOf(MainWorkArea());
    if (const HWND bar = ::FindWindowA("Shell_TrayWnd", nullptr)) {
        RECT place{};
        ::GetWindowRect(bar, &place);
        // A bar that nobody sees has no place.
        if (!::IsRectEmpty(&place)) {
            facts.window = BoxOf(place);
            ::EnumChildWindows(bar, &AddChild, reinterpret_cast<LPARAM>(&facts.children));
            return facts;
        }
    }
    APPBARDATA data{};
    data.cbSize = sizeof(data);
    if (::SHAppBarMessage(ABM_GETTASKBARPOS, &data) && !::IsRectEmpty(&data.rc)) {
        facts.reported = TaskbarFacts::Bar{.edge = EdgeOf(data.uEdge), .box = BoxOf(data.rc)};
    }
    return facts;
}

}  // namespace

RECT GetTaskbarNotifyRect() {
    return PlaceOf(FindNotifyBox(ReadTaskbar()));
}

RECT GetTaskbarIconsRect() {
    return PlaceOf(FindIcons(FindNotifyBox(ReadTaskbar())));
}

}  // namespace brennvar
