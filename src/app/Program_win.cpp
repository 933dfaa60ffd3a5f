#include "app/Program_win.h"

#include "app/FirewallControlCenterDialog_win.h"
#include "base/Handles_win.h"
#include "config/Folders_win.h"
// windows.h must stand before these.
#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

#include <string>

namespace brennvar {
namespace {

[[nodiscard]] bool InitWindowClasses() {
    INITCOMMONCONTROLSEX classes{};
    classes.dwSize = sizeof(classes);
    classes.dwICC =
        ICC_STANDARD_CLASSES | ICC_LISTVIEW_CLASSES | ICC_BAR_CLASSES | ICC_PROGRESS_CLASS | ICC_INTERNET_CLASSES;
    return ::InitCommonControlsEx(&classes) != FALSE;
}

[[nodiscard]] bool IsSupportedPlatform() {
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof(version);
    return ::GetVersionExA(&version) && version.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

// With the skin and the language that the service has written down meanwhile.
void StartAgain() {
    const std::string folder = GetInstallationFolder();
    ::SetCurrentDirectoryA(folder.c_str());
    ::ShellExecuteA(nullptr, "open", (folder + "\\BrennvarGUI.exe").c_str(), nullptr, folder.c_str(),
                    SW_SHOWNORMAL);
}

}  // namespace

int RunProgram(Clock& clock) {
    if (!InitWindowClasses()) return 0;
    if (!IsSupportedPlatform()) {
        // Before any language file is open, and without our own windows, which may not work there.
        ::MessageBoxA(nullptr, "Brennvar Personal Firewall requires Windows 2000/XP/Vista operating system!",
                      "Brennvar Personal Firewall", MB_OK | MB_ICONSTOP);
        return 0;
    }
    // One interface for each user's session: two would take questions and notices from each other.
    UniqueMutex running(::CreateMutexA(nullptr, FALSE, "Local\\BrennvarGUI"));
    if (::GetLastError() == ERROR_ALREADY_EXISTS) {
        ::AllowSetForegroundWindow(ASFW_ANY);
        ::PostMessageA(HWND_BROADCAST, FirewallControlCenterDialog::OpenWindowMessage(), 0, 0);
        return 0;
    }
    // The shell's icons need COM.
    const bool hasCom = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
    using ControlCenter = FirewallControlCenterDialog;
    if (ControlCenter(clock).Run() == ControlCenter::Outcome::Restart) {
        // The new one must not take this one for the one that is running already.
        running.Reset();
        StartAgain();
    }
    if (hasCom) ::CoUninitialize();
    return 0;
}

}  // namespace brennvar
