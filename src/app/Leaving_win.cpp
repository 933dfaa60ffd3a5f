#include "app/Leaving_win.h"

#include <chrono>
#include <utility>

#include "config/Resources_win.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// How long the last commands may take; a service that is gone must not hold the program up.
constexpr std::chrono::milliseconds kExitPatience{3000};
// How long the service may take to write down a choice that it has received.
constexpr std::chrono::milliseconds kSettingsPatience{1000};
constexpr std::chrono::milliseconds kSettingsPause{20};

}  // namespace

bool Leaving::Confirm(HWND window, const Text& question, DefaultAnswer byEnter) const {
    // Over a dialog that is open, so that the last one that was opened is the first to be answered.
    const HWND owner = ModalOwner(window).value_or(window);
    return AskToContinue(m_parts.fonts, m_parts.language, owner, m_parts.language.GetText(question), byEnter);
}

void Leaving::LeaveScreen(HWND window) {
    ::ShowWindow(window, SW_HIDE);
    // A dialog over this window, or over another dialog of it, would stay, and keep the program from ending until
    // somebody closes it.
    const auto close = [](HWND other, LPARAM main) -> BOOL {
        const HWND owner = reinterpret_cast<HWND>(main);
        if (other != owner && ::GetAncestor(other, GA_ROOTOWNER) == owner && ::IsWindowVisible(other)) {
            ::PostMessageA(other, WM_CLOSE, 0, 0);
        }
        return TRUE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), close, reinterpret_cast<LPARAM>(window));
    m_parts.tray.Leave();
}

void Leaving::StopLinks() {
    m_parts.link.Stop(kExitPatience);
    m_parts.reads.Stop(0ms);
}

void Leaving::Exit(HWND window, std::function<bool()> mustStay, std::function<void()> end) {
    if (m_isLeaving) return;
    m_isLeaving = true;
    const bool confirmed =
        Confirm(window,
                Text{505,
                     "Do you really want to exit Brennvar Personal Firewall? Warning: After this "
                     "action, your system will be not protected against internet threats and your "
                     "active connections could be lost. Continue anyway?"},
                DefaultAnswer::Cancel);
    if (!confirmed || mustStay()) {
        m_isLeaving = false;
        return;
    }
    m_parts.gate.CheckSecurityPassword({.owner = window,
                                        .action =
                                            [this, window, mustStay = std::move(mustStay), end = std::move(end)] {
                                                if (mustStay()) {
                                                    m_isLeaving = false;
                                                    return;
                                                }
                                                TellServiceAndStop(window);
                                                end();
                                            },
                                        .refused = [this] { m_isLeaving = false; }});
}

void Leaving::TellServiceAndStop(HWND window) {
    LeaveScreen(window);
    m_parts.link.Send([](CommandPipe& pipe) { pipe.CMD_SHUTDOWN_FIRST(); });
    m_parts.link.Send([](CommandPipe& pipe) { pipe.CMD_SHUTDOWN_SECOND(); });
    StopLinks();
}

void Leaving::Send(const ResourceChoice& choice) {
    m_parts.link.Send([skin = choice.skin](CommandPipe& pipe) { pipe.CMD_SET_SKIN(skin); });
    m_parts.link.Send([language = choice.language](CommandPipe& pipe) { pipe.CMD_SET_LANGUAGE(language); });
}

Leaving::Restart Leaving::ApplyResources(HWND window, const ResourceChoice& current, const ResourceChoice& chosen,
                                         const std::function<bool()>& isBusy) {
    if (m_isLeaving) return Restart::Refused;
    m_isLeaving = true;
    const bool restarts = ApplyResourceChoice(
        current, chosen,
        {.askForRestart =
             [this, window] {
                 return Confirm(window,
                                Text{58,
                                     "Your skin and language setting has been changed. Changes will not be fully "
                                     "visible until program restart. Restart now?"},
                                DefaultAnswer::Ok);
             },
         .send = [this](const ResourceChoice& choice) { Send(choice); },
         .isBusy = isBusy});
    if (!restarts) {
        m_isLeaving = false;
        return Restart::NotWanted;
    }
    LeaveScreen(window);
    // The service is not told that the interface ends, as on exit: protection goes on without a gap.
    StopLinks();
    WaitUntilWritten(chosen);
    return Restart::Wanted;
}

void Leaving::WaitUntilWritten(const ResourceChoice& choice) {
    // A command has no answer. The new process reads the names at once, so they must have been written by now; a
    // service that does not write them is not waited for any longer.
    for (auto waited = 0ms; CurrentResourceChoice() != choice && waited < kSettingsPatience;
         waited += kSettingsPause) {
        m_parts.clock.Sleep(kSettingsPause);
    }
}

}  // namespace brennvar
