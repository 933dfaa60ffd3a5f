// How the user leaves the program: for good, or to have it started anew with another skin or language.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "app/ControlCenterTray_win.h"
#include "base/Clock.h"
#include "base/TaskThread.h"
#include "config/Language.h"
#include "config/ResourceChoice.h"
#include "dialogs/Questions_win.h"
#include "ipc/ServiceLink.h"
#include "security/SecurityPasswordGate_win.h"
#include "ui/Fonts_win.h"

namespace brennvar {

// User-interface thread only. A question of one of these functions pumps messages; the other one does nothing then.
class Leaving {
public:
    // What is borrowed for the life of the program.
    struct Parts {
        const CFonts& fonts;
        const Language& language;
        ControlCenterTray& tray;
        SecurityPasswordGate& gate;
        ServiceLink& link;
        TaskThread& reads;
        Clock& clock;
    };
    explicit Leaving(const Parts& parts) : m_parts(parts) {}

    // Asks whether to leave, then for the security password, tells the service and stops the links. end is called
    // when the window has nothing left to do but to end, later than this call; not when the user stays. mustStay is
    // looked at after each of the questions, which let other things begin.
    void Exit(HWND window, std::function<bool()> mustStay, std::function<void()> end);

    enum class Restart { Refused, NotWanted, Wanted };
    // Does nothing when the choice of skin and language is the current one. Else it asks about a restart and sends
    // the choice whatever the answer. Refused: the user is being asked about leaving already, and nothing was sent.
    // Wanted: the links have stopped, and the window has nothing left to do but to end.
    [[nodiscard]] Restart ApplyResources(HWND window, const ResourceChoice& current, const ResourceChoice& chosen,
                                         const std::function<bool()>& isBusy);

private:
    // OK or Cancel.
    [[nodiscard]] bool Confirm(HWND window, const Text& question, DefaultAnswer byEnter) const;
    void Send(const ResourceChoice& choice);
    void TellServiceAndStop(HWND window);
    // Takes the program away from the screen: what follows can take a while, and the user is done with it.
    void LeaveScreen(HWND window);
    // Lets the last commands arrive.
    void StopLinks();
    void WaitUntilWritten(const ResourceChoice& choice);

    const Parts m_parts;
    bool m_isLeaving = false;  // or asking whether to
};

}  // namespace brennvar
