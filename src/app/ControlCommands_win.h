// The commands of the control center that are neither pages nor windows: what a button of an option page or an item
// of the tray menu asks of the service. User-interface thread only.
#pragma once

#include <functional>

#include "base/Clock.h"
#include "config/Language.h"
#include "ipc/ServiceLink.h"
#include "security/SecurityPasswordGate_win.h"
#include "ui/Fonts_win.h"

namespace brennvar {

class ControlCommands {
public:
    // Borrowed for the life of the program.
    struct Parts {
        const CFonts& fonts;
        const Language& language;
        ServiceLink& link;
        SecurityPasswordGate& gate;
        Clock& clock;
    };
    explicit ControlCommands(const Parts& parts) : m_parts(parts) {}

    // True for a command of these. The window owns what the command asks; one that would open a dialog is left
    // undone while another one is open.
    bool OnCommand(HWND window, int id);

private:
    using Command = std::function<void(CommandPipe&, const Language&)>;

    // Sends it when the security password allows it.
    void SendProtected(HWND window, const Command& command);
    // The same for what cannot be undone: the user is asked first.
    void SendConfirmed(HWND window, const Text& question, const Command& command);
    void ResetFingerprints(HWND window);
    void SwitchNetwork(bool isOn);
    void UpdateSignatures(HWND window);
    void DeleteLogs(HWND window);

    const Parts m_parts;
    // As the user switched it last. Nothing tells how it is: a start finds it on.
    bool m_isNetworkOn = true;
};

}  // namespace brennvar
