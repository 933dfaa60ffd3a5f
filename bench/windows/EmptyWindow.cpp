// The yardstick of the start: the least program that shows a window of the control center's size.
//   --asks      the yardstick of an idle day: hidden, with timers like the control center's, of which one asks the
//               driver for a question, ten times a second, with no more calls of the system than that takes
//   --threads N with so many threads that do nothing, for what the system itself takes for each
#include "base/Windows_win.h"

#include <cstdlib>
#include <cstring>
#include <iterator>
#include <vector>

#include "ipc/DriverRecords.h"

namespace {

constexpr UINT kPeriods[] = {1000, 1000, 1000, 100, 1000, 100};  // ms
constexpr WPARAM kAskingTimer = 4;

void AskDriver() {
    static std::vector<std::byte> data(brennvar::kQuestionDataSize);
    static brennvar::ConnectionPromptRequest request;
    const HANDLE device =
        ::CreateFileA(brennvar::kDriverControlDeviceName, GENERIC_READ | GENERIC_WRITE,
                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (device == INVALID_HANDLE_VALUE) return;
    brennvar::PromptExchangeBlock block{};
    block.dataAddress = reinterpret_cast<ULONG_PTR>(data.data());
    block.dataSize = brennvar::kQuestionDataSize;
    block.requestAddress = reinterpret_cast<ULONG_PTR>(&request);
    OVERLAPPED overlapped{};
    overlapped.hEvent = ::CreateEventA(nullptr, TRUE, FALSE, nullptr);
    DWORD returned = 0;
    ::DeviceIoControl(device, brennvar::kControlFetchQuestion, &block, sizeof(block), &block, sizeof(block),
                      &returned, &overlapped);
    ::GetOverlappedResult(device, &overlapped, &returned, TRUE);
    ::CloseHandle(overlapped.hEvent);
    ::CloseHandle(device);
}

DWORD WINAPI Wait(void*) {
    ::Sleep(INFINITE);
    return 0;
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_TIMER && wParam == kAskingTimer) AskDriver();
    if (message == WM_DESTROY) ::PostQuitMessage(0);
    return ::DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE module, HINSTANCE, LPSTR arguments, int) {
    const bool asks = std::strcmp(arguments, "--asks") == 0;
    constexpr char kThreads[] = "--threads ";
    if (const char* const given = std::strstr(arguments, kThreads)) {
        for (int left = std::atoi(given + std::strlen(kThreads)); left > 0; --left)
            ::CloseHandle(::CreateThread(nullptr, 0, &Wait, nullptr, 0, nullptr));
    }
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = &Procedure;
    windowClass.hInstance = module;
    windowClass.hbrBackground = ::GetSysColorBrush(COLOR_WINDOW);
    windowClass.lpszClassName = "EmptyWindow";
    ::RegisterClassA(&windowClass);
    const HWND window = ::CreateWindowExA(0, "EmptyWindow", "Empty", WS_OVERLAPPEDWINDOW | (asks ? 0 : WS_VISIBLE),
                                          100, 60, 1000, 680, nullptr, nullptr, module, nullptr);
    if (asks) {
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
