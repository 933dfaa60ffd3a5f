// The yardstick of the start: the least program that shows a window of the control center's size.
#include "base/Windows_win.h"

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE module, HINSTANCE, LPSTR, int) {
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = &Procedure;
    windowClass.hInstance = module;
    windowClass.hbrBackground = ::GetSysColorBrush(COLOR_WINDOW);
    windowClass.lpszClassName = "EmptyWindow";
    ::RegisterClassA(&windowClass);
    ::CreateWindowExA(0, "EmptyWindow", "Empty", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 60, 1000, 680, nullptr,
                      nullptr, module, nullptr);
    MSG message;
    while (::GetMessageA(&message, nullptr, 0, 0) > 0) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
    return 0;
}
