#include "app/ControlCommands_win.h"

#include <optional>

#include "app/DeleteLogDialog_win.h"
#include "commands/FirewallCommands.h"
#include "config/ResourceIds.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"

namespace brennvar {

bool ControlCommands::OnCommand(HWND window, int id) {
    switch (id) {
        case IDM_RESET_TRUSTED:
            SendConfirmed(window, Text{1270, "Do you want to reset the list of trusted programs?"}, &ResetTrusted);
            return true;
        case IDM_RESET:
            SendConfirmed(window, Text{1271, "Do you want to reset all settings of the firewall?"}, &ResetFirewall);
            return true;
        case IDM_RESET_FINGERPRINTS: ResetFingerprints(window); return true;
        case IDM_TEST_MAIL: SendProtected(window, &SendTestMail); return true;
        case IDM_UPDATE: UpdateSignatures(window); return true;
        case IDM_DELETE_LOGS: DeleteLogs(window); return true;
        case IDM_SET_PASSWORD: m_parts.gate.SetSecurityPassword(window); return true;
        case IDM_NETWORK_ENABLE: SwitchNetwork(true); return true;
        case IDM_NETWORK_DISABLE: SwitchNetwork(false); return true;
        default: return false;
    }
}

void ControlCommands::SwitchNetwork(bool isOn) {
    m_isNetworkOn = isOn;
    m_parts.link.Send([isOn](CommandPipe& pipe) { EnableNetwork(pipe, isOn); });
}

void ControlCommands::ResetFingerprints(HWND window) {
    // As the network is when the password has been entered.
    const auto send = [this] {
        m_parts.link.Send([&language = m_parts.language, isOn = m_isNetworkOn](CommandPipe& pipe) {
            brennvar::ResetFingerprints(pipe, language, isOn);
        });
    };
    m_parts.gate.CheckSecurityPassword({.owner = window, .action = send, .refused = {}});
}

void ControlCommands::SendProtected(HWND window, const Command& command) {
    const auto send = [this, command] {
        m_parts.link.Send([&language = m_parts.language, command](CommandPipe& pipe) { command(pipe, language); });
    };
    m_parts.gate.CheckSecurityPassword({.owner = window, .action = send, .refused = {}});
}

void ControlCommands::SendConfirmed(HWND window, const Text& question, const Command& command) {
    if (!::IsWindowEnabled(window)) return;
    if (AskToContinue(m_parts.fonts, m_parts.language, window, m_parts.language.GetText(question),
                      DefaultAnswer::Cancel)) {
        SendProtected(window, command);
    }
}

void ControlCommands::UpdateSignatures(HWND window) {
    const auto tell = [this, window](bool wasThere) {
        const std::optional<HWND> place = ModalOwner(window);
        if (!wasThere || !place) return;
        ShowMessage(m_parts.fonts, m_parts.language, *place,
                    m_parts.language.GetText(202, "Signatures has been sucessfully updated!"));
    };
    const auto send = [this, tell] {
        m_parts.link.Send([](CommandPipe& pipe) { brennvar::UpdateSignatures(pipe); }, tell);
    };
    m_parts.gate.CheckSecurityPassword({.owner = window, .action = send, .refused = {}});
}

void ControlCommands::DeleteLogs(HWND window) {
    if (!::IsWindowEnabled(window)) return;
    const auto choose = [this, window] {
        if (!::IsWindowEnabled(window)) return;  // another dialog has opened while the password was read
        DeleteLogDialog dialog(m_parts.fonts, m_parts.language, m_parts.clock.Today());
        const DeleteLogDialog::Choice choice = dialog.Ask(window);
        if (choice == DeleteLogDialog::Choice::None) return;
        m_parts.link.Send([day = dialog.Day(), olderToo = choice == DeleteLogDialog::Choice::DayAndOlder](
                              CommandPipe& pipe) { brennvar::DeleteLogs(pipe, day, olderToo); });
    };
    m_parts.gate.CheckSecurityPassword({.owner = window, .action = choose, .refused = {}});
}

}  // namespace brennvar
