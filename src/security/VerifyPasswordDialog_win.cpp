#include "security/VerifyPasswordDialog_win.h"

#include "config/ResourceIds.h"
#include "security/PasswordCheck.h"

namespace brennvar {

VerifyPasswordDialog::VerifyPasswordDialog(const PasswordDialogContext& context)
    : PasswordDialog(IDD_VERIFY_PASSWORD, context,
                     {{IDC_PASSWORD_LABEL, IDC_PASSWORD, Text{183, "Please enter password:"}},
                      {IDC_PASSWORD_CONFIRM_LABEL, IDC_PASSWORD_CONFIRM, Text{185, "Confirm password:"}}}) {}

void VerifyPasswordDialog::OnStored(const Password& stored) {
    switch (CheckEntered(stored, Entered(IDC_PASSWORD), Entered(IDC_PASSWORD_CONFIRM))) {
        case PasswordVerdict::Wrong: Complain(Text{180, "Password is wrong!"}, IDC_PASSWORD); break;
        case PasswordVerdict::Unconfirmed:
            Complain(Text{181, "Password and confirmation password do not match!"}, IDC_PASSWORD_CONFIRM);
            break;
        case PasswordVerdict::Right: End(IDOK); break;
    }
}

}  // namespace brennvar
