#include "base/UserSession_win.h"

#include "base/SystemFunction_win.h"
// windows.h must stand before this.
#include <wtsapi32.h>

namespace brennvar {

namespace {

template <class Function>
[[nodiscard]] Function* FindTerminalFunction(const char* name) {
    // Stays loaded: it is used until the end of the process.
    static const HMODULE library = ::LoadLibraryA("wtsapi32.dll");
    return FindFunction<Function>(library, name);
}

}  // namespace

bool WinUserSession::IsInFront() const {
    const auto query = FindTerminalFunction<decltype(::WTSQuerySessionInformationA)>("WTSQuerySessionInformationA");
    const auto release = FindTerminalFunction<decltype(::WTSFreeMemory)>("WTSFreeMemory");
    if (!query || !release) return true;
    char* answer = nullptr;
    DWORD size = 0;
    if (!query(WTS_CURRENT_SERVER_HANDLE, WTS_CURRENT_SESSION, WTSConnectState, &answer, &size)) return true;
    const bool isActive = size < sizeof(WTS_CONNECTSTATE_CLASS) ||
                          *reinterpret_cast<const WTS_CONNECTSTATE_CLASS*>(answer) == WTSActive;
    release(answer);
    return isActive;
}

bool WinUserSession::TellChangesTo(HWND window) {
    const auto tell =
        FindTerminalFunction<decltype(::WTSRegisterSessionNotification)>("WTSRegisterSessionNotification");
    return tell && tell(window, NOTIFY_FOR_THIS_SESSION);
}

void WinUserSession::StopTelling(HWND window) {
    const auto stop =
        FindTerminalFunction<decltype(::WTSUnRegisterSessionNotification)>("WTSUnRegisterSessionNotification");
    if (stop) stop(window);
}

}  // namespace brennvar
