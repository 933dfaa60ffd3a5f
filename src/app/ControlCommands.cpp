#include "app/ControlCommands.h"

#include <optional>

#include "app/DeleteLogDialog.h"
#include "app/Questions.h"
#include "commands/FirewallCommands.h"
#include "ui/ModalPlace.h"
#include "ui/ResourceIds.h"

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
    SendProtected(window, [isOn = m_isNetworkOn](CommandPipe& pipe, const Language& language) {
        brennvar::ResetFingerprints(pipe, language, isOn);
    });
}

void ControlCommands::SendProtected(HWND window, const Command& command) {
    m_parts.gate.CheckSecurityPassword(
        {.owner = window,
         .action =
             [&parts = m_parts, command] {
                 parts.link.Send([&parts, command](CommandPipe& pipe) { command(pipe, parts.language); });
             },
         .refused = {}});
}

void ControlCommands::SendConfirmed(HWND window, const Text& question, const Command& command) {
    if (!::IsWindowEnabled(window)) return;
    if (AskToContinue(m_parts.fonts, m_parts.language, window, m_parts.language.GetText(question),
                      DefaultAnswer::Cancel)) {
        SendProtected(window, command);
    }
}

void ControlCommands::UpdateSignatures(HWND window) {
    const auto tell = [&parts = m_parts, window](bool wasThere) {
        const std::optional<HWND> place = ModalOwner(window);
        if (!wasThere || !place) return;
        ShowNotice(parts.fonts, parts.language, *place,
                   parts.language.GetText(202, "Signatures has been sucessfully updated!"));
    };
    m_parts.gate.CheckSecurityPassword(
        {.owner = window,
         .action = [&parts = m_parts,
                    tell] { parts.link.Send([](CommandPipe& pipe) { brennvar::UpdateSignatures(pipe); }, tell); },
         .refused = {}});
}

void ControlCommands::DeleteLogs(HWND window) {
    if (!::IsWindowEnabled(window)) return;
    const auto choose = [&parts = m_parts, window] {
        if (!::IsWindowEnabled(window)) return;  // another dialog has opened while the password was read
        DeleteLogDialog dialog(parts.fonts, parts.language, parts.clock.Today());
        const DeleteLogDialog::Choice choice = dialog.Ask(window);
        if (choice == DeleteLogDialog::Choice::None) return;
        parts.link.Send([day = dialog.Day(), olderToo = choice == DeleteLogDialog::Choice::DayAndOlder](
                            CommandPipe& pipe) { brennvar::DeleteLogs(pipe, day, olderToo); });
    };
    m_parts.gate.CheckSecurityPassword({.owner = window, .action = choose, .refused = {}});
}

}  // namespace brennvar
