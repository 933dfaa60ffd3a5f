#include "app/Leaving_win.h"

#include <chrono>
#include <optional>
#include <utility>

#include "base/FlagWhile.h"
#include "config/Resources_win.h"
#include "dialogs/ModalPlace_win.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// How long the service may take to write down a choice that it has received.
constexpr std::chrono::milliseconds kSettingsPatience{1000};
constexpr std::chrono::milliseconds kSettingsPause{20};

}  // namespace

bool Leaving::Confirm(HWND window, UserCommand command, DefaultAnswer byEnter) const {
    // Over a dialog that is open, so that the last one that was opened is the first to be answered.
    const HWND owner = ModalOwner(window).value_or(window);
    const CommandInfo& info = InfoOf(command);
    const Language& language = m_session.language;
    return AskToContinue(m_session.fonts, language, owner, language.GetText(info.question),
                         language.GetText(info.verb), byEnter);
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
    if (m_isLeaving) return;
    FlagWhile leaving(m_isLeaving);
    if (!Confirm(window, UserCommand::Exit, DefaultAnswer::Cancel) || mustStay()) return;
    m_session.commander.AskFor(
        UserCommand::Exit,
        [this, window, mustStay = std::move(mustStay), end = std::move(end)] {
            FlagWhile leavingNow(m_isLeaving);
            if (mustStay()) return;
            leavingNow.Keep();
            TellServiceAndStop(window);
            end();
        },
        [this] { m_isLeaving = false; });
    leaving.Keep();
}

void Leaving::TellServiceAndStop(HWND window) {
    LeaveScreen(window);
    m_session.activity.Stop();
    m_session.commander.Send(Batch(UserCommand::Exit));
    StopSession();
}

void Leaving::StopSession() {
    m_session.link.WaitUntilSent(kLastCommandsPatience);
    m_session.StopLinks(0ms);
}

bool Leaving::ApplyResources(HWND window, const ResourceChoice& current, const ResourceChoice& chosen,
                             Restart restart) {
    if (m_isLeaving) return false;
    if (chosen == current) return true;
    FlagWhile leaving(m_isLeaving);
    if (!Confirm(window, UserCommand::SetResources, DefaultAnswer::Ok)) {
        m_session.commander.Send(Batch(UserCommand::SetResources, {.resources = chosen}));
        return true;
    }
    m_handover.Begin(chosen, [this, window, chosen, restart = std::move(restart)](bool isDelivered) {
        OnHandedOver(window, chosen, restart, isDelivered);
    });
    leaving.Keep();
    return true;
}

void Leaving::OnHandedOver(HWND window, const ResourceChoice& choice, const Restart& restart, bool isDelivered) {
    {
        FlagWhile leaving(m_isLeaving);
        // Looked at now: the question and the way to the service let other things begin.
        if (isDelivered && !restart.isBusy()) leaving.Keep();
    }
    if (!m_isLeaving) {
        if (isDelivered) return;
        restart.lost();
        const Language& language = m_session.language;
        if (const std::optional<HWND> place = ModalOwner(window)) {
            ShowMessage(m_session.fonts, language, *place,
                        language.GetText(2178,
                                         "The firewall service did not answer in time. Skin and language may "
                                         "stay as they are."));
        }
        return;
    }
    LeaveScreen(window);
    m_session.activity.Stop();
    // The service is not told that the interface ends, as on exit: protection goes on without a gap.
    StopSession();
    WaitUntilWritten(choice);
    restart.end();
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
