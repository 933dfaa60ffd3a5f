#include "base/UserSession_win.h"

#include "base/SystemFunction_win.h"
// windows.h must stand before this.
#include <wtsapi32.h>

namespace brennvar {

WinUserSession::WinUserSession() : m_library(::LoadLibraryA("wtsapi32.dll")) {}

bool WinUserSession::IsInFront() const {
    const auto query =
        FindFunction<decltype(::WTSQuerySessionInformationA)>(m_library, "WTSQuerySessionInformationA");
    const auto release = FindFunction<decltype(::WTSFreeMemory)>(m_library, "WTSFreeMemory");
    if (!query || !release) return true;
    char* answer = nullptr;
    DWORD size = 0;
    if (!query(WTS_CURRENT_SERVER_HANDLE, WTS_CURRENT_SESSION, WTSConnectState, &answer, &size)) return true;
    const bool isActive = size < sizeof(WTS_CONNECTSTATE_CLASS) ||
                          *reinterpret_cast<const WTS_CONNECTSTATE_CLASS*>(answer) == WTSActive;
    release(answer);
    return isActive;
}

void WinUserSession::TellChangesTo(HWND window) {
    const auto tell =
        FindFunction<decltype(::WTSRegisterSessionNotification)>(m_library, "WTSRegisterSessionNotification");
    if (tell) tell(window, NOTIFY_FOR_THIS_SESSION);
}

void WinUserSession::StopTelling(HWND window) {
    const auto stop =
        FindFunction<decltype(::WTSUnRegisterSessionNotification)>(m_library, "WTSUnRegisterSessionNotification");
    if (stop) stop(window);
}

}  // namespace brennvar
