#include "security/EnterPasswordDialog_win.h"

#include "config/ResourceIds.h"
#include "security/PasswordCheck.h"

namespace brennvar {

EnterPasswordDialog::EnterPasswordDialog(const PasswordDialogContext& context, Commander& commander)
    : PasswordDialog(
          IDD_ENTER_PASSWORD, context,
          {{IDC_PASSWORD_OLD_LABEL, IDC_PASSWORD_OLD, Text{192, "Old password:"}},
           {IDC_PASSWORD_LABEL, IDC_PASSWORD, Text{193, "New password: (Leave blank to disable protection)"}},
           {IDC_PASSWORD_CONFIRM_LABEL, IDC_PASSWORD_CONFIRM, Text{194, "Confirm new password:"}}}),
      m_commander(commander) {}

void EnterPasswordDialog::OnStored(const Password& stored) {
    const Password changed = Entered(IDC_PASSWORD);
    switch (CheckChange(stored, Entered(IDC_PASSWORD_OLD), changed, Entered(IDC_PASSWORD_CONFIRM))) {
        case PasswordVerdict::Wrong: Complain(Text{189, "Old password is wrong!"}, IDC_PASSWORD_OLD); break;
        case PasswordVerdict::Unconfirmed:
            Complain(Text{190, "New password and confirmation password do not match!"}, IDC_PASSWORD_CONFIRM);
            break;
        case PasswordVerdict::Right:
            m_commander.Send(Batch(UserCommand::SetPassword, {.password = changed}));
            // Without knowing whether it arrives: a command has no answer.
            Tell(Text{191, "Security password has been changed."}, MessageSign::Information);
            End(IDOK);
            break;
    }
}

}  // namespace brennvar
