#include "ui/OwnMessages_win.h"

#include "ui/Paint_win.h"

namespace brennvar {
namespace {

thread_local int s_mayEnd = 0;

// What lies below is never mapped.
constexpr ULONG_PTR kLeastAddress = 0x10000;

bool IsAddress(LPARAM lParam) {
    return static_cast<ULONG_PTR>(lParam) >= kLeastAddress;
}

}  // namespace

WindowsMayEnd::WindowsMayEnd() {
    ++s_mayEnd;
}

WindowsMayEnd::~WindowsMayEnd() {
    --s_mayEnd;
}

void EndWindow(HWND window) {
    if (!window) return;
    const WindowsMayEnd mayEnd;
    ::DestroyWindow(window);
}

bool IsWindowEnding() {
    return s_mayEnd > 0;
}

bool HasNeededAddress(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETTEXT: return wParam == 0 || IsAddress(lParam);
        case WM_GETMINMAXINFO:
        case WM_NCCALCSIZE:
        case WM_WINDOWPOSCHANGING:
        case WM_WINDOWPOSCHANGED:
        case WM_STYLECHANGING:
        case WM_STYLECHANGED:
        case WM_DRAWITEM:
        case WM_MEASUREITEM:
        case WM_DELETEITEM:
        case WM_COMPAREITEM:
        case WM_HELP:
        case WM_NOTIFY:
        case WM_COPYDATA:
        case WM_SIZING:
        case WM_MOVING: return IsAddress(lParam);
        // A window takes no address as well.
        case WM_GETDLGCODE: return lParam == 0 || IsAddress(lParam);
        default: return true;
    }
}

bool IsDrawable(const DRAWITEMSTRUCT& item) {
    if (item.CtlType == ODT_MENU) return true;
    if (::GetWindowThreadProcessId(item.hwndItem, nullptr) != ::GetCurrentThreadId()) return false;
    const RECT& place = item.rcItem;
    const auto fits = [](LONG from, LONG to, int screen) {
        const LONGLONG size = static_cast<LONGLONG>(to) - from;
        return size >= 0 && size <= screen;
    };
    return fits(place.left, place.right, ::GetSystemMetrics(SM_CXVIRTUALSCREEN)) &&
           fits(place.top, place.bottom, ::GetSystemMetrics(SM_CYVIRTUALSCREEN));
}

}  // namespace brennvar
