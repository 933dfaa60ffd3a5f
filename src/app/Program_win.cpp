#include "app/Program_win.h"

#include <atomic>
#include <optional>
#include <string>
#include <vector>

#include "app/EarlierStarts_win.h"
#include "app/FirewallControlCenterDialog_win.h"
#include "app/InstanceChoice.h"
#include "app/Session_win.h"
#include "base/EndWatch.h"
#include "base/Handles_win.h"
#include "base/OwnAddresses_win.h"
#include "base/Processes_win.h"
#include "config/Folders.h"
#include "config/Folders_win.h"
#include "config/Resources_win.h"
#include "config/UserValues_win.h"
#include "ipc/Device_win.h"
#include "ipc/Pipe_win.h"
// windows.h must stand before these.
#include <commctrl.h>

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
void PrepareSurroundings(const std::string& dataFolder) {
    EnableDebugPrivilege();  // without it the paths of some processes stay unknown
    // The data folder itself is made by who installs the service, with the access list that it needs: one that this
    // user made would be his. A folder that is there is left as it is.
    ::CreateDirectoryA(LogFolderPath(dataFolder).c_str(), nullptr);
}

// With the skin and the language that the service has written down meanwhile. The new process waits for the end of
// this one. False when there is none.
[[nodiscard]] bool StartAgain() {
    const std::string folder = GetInstallationFolder();
    const std::string program = folder + "\\BrennvarGUI.exe";
    std::string commandLine = '"' + program + '"';
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessA(program.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, folder.c_str(),
                          &startup, &process)) {
        return false;
    }
    const UniqueProcess next(process.hProcess);
    ::CloseHandle(process.hThread);
    ::AllowSetForegroundWindow(process.dwProcessId);
    return true;
}

// Windows starts the program anew when it has crashed or hangs, unless it has run for less than a minute. What is
// started with the session of the user is not this program's affair.
void RegisterRestart(bool isWanted) {
    constexpr DWORD kNotAfterReboot = 8;  // RESTART_NO_REBOOT
    if (isWanted) {
        ::RegisterApplicationRestart(L"", kNotAfterReboot);
    } else {
        ::UnregisterApplicationRestart();
    }
}

// The end of a session, which waits for threads that the disk, the driver or another program may hold up: a process
// without a window must not stay. To be made before the session, so that it is there until that has gone.
class SessionEnd {
public:
    // The window has gone. To be called once or more.
    void Begin() noexcept {
        if (m_watch) return;
        RegisterRestart(false);
        m_watch.emplace(kPatience, [this] { OnOverdue(); });
    }
    // A window is to be there after this session.
    void ComeBack() noexcept { m_comesBack = true; }

private:
    // More than those have together that are given a moment: the activity server 2 s, an answer on its way 3 s.
    static constexpr std::chrono::seconds kPatience{8};

    // On the thread of the watch.
    void OnOverdue() noexcept {
        try {
            // What made it fail may be over. Nobody could end this process but the user, so it goes in any case.
            if (m_comesBack) (void)StartAgain();
        } catch (...) {  // NOLINT(bugprone-empty-catch): without memory there is no other process
        }
        ::TerminateProcess(::GetCurrentProcess(), 0);
    }

    std::atomic<bool> m_comesBack = false;
    std::optional<EndWatch> m_watch;  // last: it uses the flag
};

// Begins the end in whatever way a scope is left.
class EndAtScopeExit {
public:
    explicit EndAtScopeExit(SessionEnd& end) : m_end(end) {}
    EndAtScopeExit(const EndAtScopeExit&) = delete;
    EndAtScopeExit& operator=(const EndAtScopeExit&) = delete;
    ~EndAtScopeExit() { m_end.Begin(); }

private:
    SessionEnd& m_end;
};

// Returns when the user has left the program. ComesBack: a new process was to go on, but cannot be started.
enum class End { Final, ComesBack };
End RunControlCenter(Clock& clock, const std::string& firstMessage) {
    SessionEnd sessionEnd;
    WinDeviceOpener devices;
    WinUserValues userValues;
    WinUserSession userSession;
    WinOwnAddresses addresses;
    const std::string dataFolder = GetDataFolder();
    PrepareSurroundings(dataFolder);
    Session session(
        {.clock = clock,
         .devices = devices,
         .makeConnector = [](const StopSignal& stop) { return std::make_unique<WinPipeConnector>(stop); },
         .addresses = addresses,
         .userValues = userValues,
         .userSession = userSession,
         .dataFolder = dataFolder,
         .languageName = CurrentLanguageName()},
        OpenLanguage());
    const EndAtScopeExit endAtExit(sessionEnd);
    FirewallControlCenterDialog window(session, firstMessage);
    RegisterRestart(true);
    const bool isRestart = window.Run() == FirewallControlCenterDialog::Outcome::Restart;
    sessionEnd.Begin();
    if (!isRestart || StartAgain()) return End::Final;
    sessionEnd.ComeBack();
    return End::ComesBack;
}

// False: another one is there, which is as well.
[[nodiscard]] bool IsTheOne(Clock& clock) {
    WinEarlierStarts earlier(FirewallControlCenterDialog::OpenWindowMessage());
    switch (ChooseInstance(earlier, clock)) {
        case InstanceChoice::Run: return true;
        case InstanceChoice::Leave: return false;
        case InstanceChoice::Stuck: break;
    }
    const Language language = OpenLanguage();
    const std::string caption = language.GetText(41, "Brennvar Personal Firewall");
    const auto show = [&caption](const std::string& text, UINT style) {
        return ::MessageBoxA(nullptr, text.c_str(), caption.c_str(), style | MB_ICONWARNING | MB_SETFOREGROUND);
    };
    const std::string question = language.GetText(
        2220, "Brennvar Personal Firewall is running, but does not answer. End it and start it anew?");
    if (show(question, MB_YESNO) != IDYES) return false;
    // While the user thought about it, it may have come to itself.
    if (earlier.CallForward()) return false;
    earlier.End();
    if (!earlier.IsAnyThere()) return true;
    show(language.GetText(2230, "Brennvar Personal Firewall cannot be ended. It is not started a second time."),
         MB_OK);
    return false;
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
    if (!IsTheOne(clock)) return 0;
    End end = RunControlCenter(clock, {});
    while (end == End::ComesBack) {
        end = RunControlCenter(
            clock, OpenLanguage().GetText(2221, "The program could not be started again. It goes on running."));
    }
    return 0;
}

void TellFailedStart(const char* reason) {
    // What fails may be the language file or memory, so this is said without either.
    char text[512] = {};
    ::wsprintfA(text, "Brennvar Personal Firewall cannot be shown:\n\n%.300s", reason);
    ::MessageBoxA(nullptr, text, "Brennvar Personal Firewall", MB_OK | MB_ICONSTOP | MB_SETFOREGROUND);
}

}  // namespace brennvar
