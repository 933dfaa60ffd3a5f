// The yardstick of the start: the least program that shows a window of the control center's size.
//   --ticks  the yardstick of doing nothing: hidden, with timers like the control center's that only tick
#include "base/Windows_win.h"

#include <cstring>
#include <iterator>

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE module, HINSTANCE, LPSTR arguments, int) {
    const bool ticks = std::strcmp(arguments, "--ticks") == 0;
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = &Procedure;
    windowClass.hInstance = module;
    windowClass.hbrBackground = ::GetSysColorBrush(COLOR_WINDOW);
    windowClass.lpszClassName = "EmptyWindow";
    ::RegisterClassA(&windowClass);
    const HWND window = ::CreateWindowExA(0, "EmptyWindow", "Empty", WS_OVERLAPPEDWINDOW | (ticks ? 0 : WS_VISIBLE),
                                          100, 60, 1000, 680, nullptr, nullptr, module, nullptr);
    if (ticks) {
        constexpr UINT kPeriods[] = {1000, 1000, 1000, 100, 1000, 100};  // ms
        for (UINT timer = 0; timer < std::size(kPeriods); ++timer)
            ::SetTimer(window, timer + 1, kPeriods[timer], nullptr);
    }
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    return 0;
}
