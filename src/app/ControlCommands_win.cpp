#include "app/ControlCommands_win.h"

#include <optional>

#include "app/DeleteLogDialog_win.h"
#include "config/ResourceIds.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"

namespace brennvar {

bool ControlCommands::OnCommand(HWND window, int id) {
    switch (id) {
        case IDM_RESET_TRUSTED: Send(window, UserCommand::ResetTrusted); return true;
        case IDM_RESET: Send(window, UserCommand::ResetFirewall); return true;
        case IDM_TEST_MAIL: Send(window, UserCommand::SendTestMail); return true;
        case IDM_RESET_FINGERPRINTS: m_session.network.ResetFingerprints(); return true;
        case IDM_UPDATE: UpdateSignatures(window); return true;
        case IDM_DELETE_LOGS: DeleteLogs(window); return true;
        case IDM_EXPORT_RULES: m_session.rules.Export(RuleSet::Applications); return true;
        case IDM_IMPORT_RULES: m_session.rules.Import(RuleSet::Applications); return true;
        case IDM_EXPORT_ADVANCED: m_session.rules.Export(RuleSet::Advanced); return true;
        case IDM_IMPORT_ADVANCED: m_session.rules.Import(RuleSet::Advanced); return true;
        case IDM_SET_PASSWORD: m_session.gate.SetSecurityPassword(); return true;
        case IDM_NETWORK_ENABLE: m_session.network.Switch(true); return true;
        case IDM_NETWORK_DISABLE: m_session.network.Switch(false); return true;
        default: return false;
    }
}

void ControlCommands::Send(HWND window, UserCommand command) {
    const CommandInfo& info = InfoOf(command);
    if (info.question.number != 0) {
        if (!::IsWindowEnabled(window)) return;
        const Language& language = m_session.language;
        // What is asked first cannot be undone.
        if (!AskToContinue(m_session.fonts, language, window, language.GetText(info.question),
                           language.GetText(info.verb), DefaultAnswer::Cancel)) {
            return;
        }
    }
    m_session.commander.SendProtected(Batch(command));
}

void ControlCommands::UpdateSignatures(HWND window) {
    const auto tell = [this, window](bool wasThere) {
        const std::optional<HWND> place = ModalOwner(window);
        if (!wasThere || !place) return;
        ShowMessage(m_session.fonts, m_session.language, *place,
                    m_session.language.GetText(202, "Signatures has been sucessfully updated!"));
    };
    m_session.commander.SendProtected(Batch(UserCommand::UpdateSignatures), {.sent = tell});
}

void ControlCommands::DeleteLogs(HWND window) {
    if (!::IsWindowEnabled(window)) return;
    m_session.commander.AskFor(UserCommand::DeleteLogs, [this, window] {
        if (!::IsWindowEnabled(window)) return;  // another dialog has opened while the password was read
        DeleteLogDialog dialog(m_session.fonts, m_session.language, m_session.reads, m_session.dataFolder,
                               m_session.clock.Today());
        const DeleteLogDialog::Choice choice = dialog.Ask(window);
        if (choice == DeleteLogDialog::Choice::None) return;
        m_session.commander.Send(
            Batch(UserCommand::DeleteLogs,
                  {.day = dialog.Day(), .olderToo = choice == DeleteLogDialog::Choice::DayAndOlder}),
            [this](bool) { m_onLogsDeleted(); });
    });
}

}  // namespace brennvar
