// How the user leaves the program: for good, or to have it started anew with another skin or language.
#pragma once

#include <functional>

#include "app/ControlCenterTray_win.h"
#include "app/ResourceHandover.h"
#include "app/RuleWindows_win.h"
#include "app/Session_win.h"
#include "app/ToolWindows_win.h"
#include "base/Windows_win.h"
#include "config/ResourceChoice.h"
#include "dialogs/Questions_win.h"

namespace brennvar {

// User-interface thread only. A question of one of these functions pumps messages; the other one does nothing then.
class Leaving {
public:
    // Borrowed.
    Leaving(Session& session, ControlCenterTray& tray, ToolWindows& tools, RuleWindows& rules)
        : m_session(session),
          m_tray(tray),
          m_tools(tools),
          m_rules(rules),
          m_handover(session.commander, session.link, session.clock) {}

    // Asks whether to leave, then for the security password, tells the service and stops the links. end is called
    // when the window has nothing left to do but to end, later than this call; not when the user stays. mustStay is
    // looked at after each of the questions, which let other things begin.
    void Exit(HWND window, std::function<bool()> mustStay, std::function<void()> end);

    struct Restart {
        std::function<bool()> isBusy;  // the program must not end now
        std::function<void()> lost;    // the service did not take it in time, and may not have it
        std::function<void()> end;     // the window has nothing left to do but to end
    };
    // Does nothing when the choice of skin and language is the current one. Else it asks about a restart and sends
    // the choice whatever the answer; a restart that comes at the wrong time is left to the user. It comes when the
    // service has the choice, later than this call; where that cannot be told, the user is. False: the user is
    // leaving already, or being asked about it, and nothing was sent.
    [[nodiscard]] bool ApplyResources(HWND window, const ResourceChoice& current, const ResourceChoice& chosen,
                                      Restart restart);
    // To be called every 100 ms or so.
    void Tick() { m_handover.Tick(); }

    // The program has been taken away from the screen, and ends.
    [[nodiscard]] bool HasLeftScreen() const { return m_hasLeftScreen; }

private:
    // OK or Cancel to what the table asks before the command.
    [[nodiscard]] bool Confirm(HWND window, UserCommand command, DefaultAnswer byEnter) const;
    void TellServiceAndStop(HWND window);
    // Takes the program away from the screen: what follows can take a while, and the user is done with it.
    void LeaveScreen(HWND window);
    void StopSession();
    void OnHandedOver(HWND window, const ResourceChoice& choice, const Restart& restart, bool isDelivered);
    void WaitUntilWritten(const ResourceChoice& choice);

    Session& m_session;
    ControlCenterTray& m_tray;
    ToolWindows& m_tools;
    RuleWindows& m_rules;
    ResourceHandover m_handover;
    bool m_isLeaving = false;  // or asking whether to
    bool m_hasLeftScreen = false;
};

}  // namespace brennvar
