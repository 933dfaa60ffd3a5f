#include "app/EarlierStarts_win.h"

#include <algorithm>
#include <utility>

#include "base/AsciiCase.h"
#include "base/Processes_win.h"

namespace brennvar {
namespace {

constexpr DWORD kLookRights = PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE;
// For each of its windows; one that hangs is not waited for at all.
constexpr UINT kAnswerPatienceMs = 1000;

// In the order in which processes were started, by the system's clock, which may be set; of two that were at the
// same moment one is the first as well.
using StartOrder = std::pair<std::uint64_t, DWORD>;

StartOrder StartOf(HANDLE process, DWORD id) {
    FILETIME created{}, exited{}, kernel{}, user{};
    if (!::GetProcessTimes(process, &created, &exited, &kernel, &user)) return {UINT64_MAX, id};
    return {(std::uint64_t{created.dwHighDateTime} << 32) | created.dwLowDateTime, id};
}

bool HasEnded(HANDLE process) {
    return ::WaitForSingleObject(process, 0) == WAIT_OBJECT_0;
}

struct Call {
    DWORD processId;
    UINT message;
    bool isAnswered = false;
};

BOOL CALLBACK CallWindow(HWND window, LPARAM parameter) {
    Call& call = *reinterpret_cast<Call*>(parameter);
    DWORD owner = 0;
    ::GetWindowThreadProcessId(window, &owner);
    if (owner != call.processId) return TRUE;
    DWORD_PTR answer = 0;
    call.isAnswered = ::SendMessageTimeoutA(window, call.message, 0, 0, SMTO_BLOCK | SMTO_ABORTIFHUNG,
                                            kAnswerPatienceMs, &answer) != 0 &&
                      static_cast<LRESULT>(answer) == WinEarlierStarts::kHasOpened;
    return !call.isAnswered;
}

}  // namespace

WinEarlierStarts::WinEarlierStarts(UINT openWindow) : m_openWindow(openWindow) {
    const HANDLE own = ::GetCurrentProcess();
    const DWORD ownId = ::GetCurrentProcessId();
    const std::string image = ImagePathOf(own);
    DWORD ownSession = 0;
    if (image.empty() || !::ProcessIdToSessionId(ownId, &ownSession)) return;
    const StartOrder ownStart = StartOf(own, ownId);
    for (const std::uint32_t id : FindAllProcessIds(image.substr(image.rfind('\\') + 1))) {
        DWORD session = 0;
        if (id == ownId || !::ProcessIdToSessionId(id, &session) || session != ownSession) continue;
        // The name alone is anybody's: the file must be this one, where not everybody can put one.
        UniqueProcess process(::OpenProcess(kLookRights, FALSE, id));
        if (!process || !EqualsIgnoringCase(ImagePathOf(process.Get()), image)) continue;
        const bool isEarlier = StartOf(process.Get(), id) < ownStart;
        m_processes.push_back({.handle = std::move(process), .id = id, .isEarlier = isEarlier});
    }
}

bool WinEarlierStarts::IsAnyThere() {
    std::erase_if(m_processes, [](const Process& process) { return HasEnded(process.handle.Get()); });
    return std::any_of(m_processes.begin(), m_processes.end(),
                       [](const Process& process) { return process.isEarlier; });
}

bool WinEarlierStarts::CallForward() {
    for (const Process& process : m_processes) {
        ::AllowSetForegroundWindow(process.id);
        Call call{.processId = process.id, .message = m_openWindow};
        ::EnumWindows(&CallWindow, reinterpret_cast<LPARAM>(&call));
        if (call.isAnswered) return true;
    }
    return false;
}

void WinEarlierStarts::End() {
    for (const Process& process : m_processes) {
        if (!process.isEarlier) continue;
        const UniqueProcess ending(::OpenProcess(PROCESS_TERMINATE, FALSE, process.id));
        if (ending && ::TerminateProcess(ending.Get(), 1)) {
            constexpr DWORD kEndMs = 2000;
            ::WaitForSingleObject(process.handle.Get(), kEndMs);
        }
    }
}

}  // namespace brennvar
