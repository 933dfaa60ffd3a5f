#include "app/Program_win.h"

#include "app/FirewallControlCenterDialog_win.h"
#include "app/Session_win.h"
#include "base/Handles_win.h"
#include "base/NetworkAddresses_win.h"
#include "base/Processes_win.h"
#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/Resources_win.h"
#include "config/UserValues_win.h"
#include "ipc/Device_win.h"
#include "ipc/Pipe_win.h"
// windows.h must stand before these.
#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>
#include <shlobj.h>

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

// What the rest of the program, and the service, expect to be there.
void PrepareSurroundings(const std::string& dataFolder, UserValues& userValues) {
    EnableDebugPrivilege();  // without it the paths of some processes stay unknown
    // With the folders above it; one that is there already is left as it is.
    const std::string logFolder = LogFolderPath(dataFolder);
    if (::GetFileAttributesA(logFolder.c_str()) == INVALID_FILE_ATTRIBUTES) {
        ::SHCreateDirectoryExA(nullptr, logFolder.c_str(), nullptr);
    }
    const std::vector<std::uint32_t> ids = FindProcessIds({"brennvar.exe", "brennvargui.exe"});
    userValues.WriteUserValue(kUserValueServerPid, ids[0]);
    userValues.WriteUserValue(kUserValueGuiPid, ids[1]);
}

// Returns when the user has left the program.
FirewallControlCenterDialog::Outcome RunControlCenter(Clock& clock) {
    WinDeviceOpener devices;
    WinUserValues userValues;
    const std::string dataFolder = GetDataFolder();
    PrepareSurroundings(dataFolder, userValues);
    Session session(
        {.clock = clock,
         .devices = devices,
         .makeConnector = [](const StopSignal& stop) { return std::make_unique<WinPipeConnector>(stop); },
         .readAddresses = &ReadInterfaceAddresses,
         .userValues = userValues,
         .isUserSessionEnding = [] { return ::GetSystemMetrics(SM_SHUTTINGDOWN) != 0; },
         .dataFolder = dataFolder,
         .languageName = CurrentLanguageName()},
        OpenLanguage());
    return FirewallControlCenterDialog(session).Run();
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
    if (RunControlCenter(clock) == FirewallControlCenterDialog::Outcome::Restart) {
        // The new one must not take this one for the one that is running already.
        running.Reset();
        StartAgain();
    }
    if (hasCom) ::CoUninitialize();
    return 0;
}

}  // namespace brennvar
