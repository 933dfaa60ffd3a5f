#include "app/Leaving_win.h"

#include <chrono>
#include <utility>

#include "config/Resources_win.h"
#include "dialogs/ModalPlace_win.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// How long the last commands may take; a service that is gone must not hold the program up.
constexpr std::chrono::milliseconds kExitPatience{3000};
// How long the service may take to write down a choice that it has received.
constexpr std::chrono::milliseconds kSettingsPatience{1000};
constexpr std::chrono::milliseconds kSettingsPause{20};

}  // namespace

bool Leaving::Confirm(HWND window, UserCommand command, DefaultAnswer byEnter) const {
    // Over a dialog that is open, so that the last one that was opened is the first to be answered.
    const HWND owner = ModalOwner(window).value_or(window);
    return AskToContinue(m_session.fonts, m_session.language, owner,
                         m_session.language.GetText(InfoOf(command).question), byEnter);
}

void Leaving::LeaveScreen(HWND window) {
    m_hasLeftScreen = true;
    ::ShowWindow(window, SW_HIDE);
    // A dialog over this window, or over another dialog of it, would stay, and keep the program from ending until
    // somebody closes it. So would one over a tool's dialog.
    struct Owners {
        HWND window;
        const ToolWindows& tools;
    };
    const Owners owners{.window = window, .tools = m_tools};
    const auto close = [](HWND other, LPARAM parameter) -> BOOL {
        const Owners& own = *reinterpret_cast<const Owners*>(parameter);
        const bool isOwned = ::GetAncestor(other, GA_ROOTOWNER) == own.window || own.tools.Owns(other);
        if (other != own.window && isOwned && ::IsWindowVisible(other)) ::PostMessageA(other, WM_CLOSE, 0, 0);
        return TRUE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), close, reinterpret_cast<LPARAM>(&owners));
    m_tools.CloseAll();
    m_rules.Close();
    m_tray.Leave();
}

void Leaving::Exit(HWND window, std::function<bool()> mustStay, std::function<void()> end) {
    if (std::exchange(m_isLeaving, true)) return;
    if (!Confirm(window, UserCommand::Exit, DefaultAnswer::Cancel) || mustStay()) {
        m_isLeaving = false;
        return;
    }
    m_session.commander.AskFor(
        UserCommand::Exit,
        [this, window, mustStay = std::move(mustStay), end = std::move(end)] {
            if (mustStay()) {
                m_isLeaving = false;
                return;
            }
            TellServiceAndStop(window);
            end();
        },
        [this] { m_isLeaving = false; });
}

void Leaving::TellServiceAndStop(HWND window) {
    LeaveScreen(window);
    m_session.activity.Stop();
    m_session.commander.Send(Batch(UserCommand::Exit));
    m_session.StopLinks(kExitPatience);
}

Leaving::Restart Leaving::ApplyResources(HWND window, const ResourceChoice& current, const ResourceChoice& chosen,
                                         const std::function<bool()>& isBusy) {
    if (m_isLeaving) return Restart::Refused;
    if (chosen == current) return Restart::NotWanted;
    m_isLeaving = true;
    const bool wantsRestart = Confirm(window, UserCommand::SetResources, DefaultAnswer::Ok);
    m_session.commander.Send(Batch(UserCommand::SetResources, {.resources = chosen}));
    // Looked at last: the question lets other things begin.
    if (!wantsRestart || isBusy()) {
        m_isLeaving = false;
        return Restart::NotWanted;
    }
    LeaveScreen(window);
    m_session.activity.Stop();
    // The service is not told that the interface ends, as on exit: protection goes on without a gap.
    m_session.StopLinks(kExitPatience);
    WaitUntilWritten(chosen);
    return Restart::Wanted;
}

void Leaving::WaitUntilWritten(const ResourceChoice& choice) {
    // A command has no answer. The new process reads the names at once, so they must have been written by now; a
    // service that does not write them is not waited for any longer.
    for (auto waited = 0ms; CurrentResourceChoice() != choice && waited < kSettingsPatience;
         waited += kSettingsPause) {
        m_session.clock.Sleep(kSettingsPause);
    }
}

}  // namespace brennvar
