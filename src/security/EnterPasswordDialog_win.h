// Sets, changes or clears the security password. The old one protects it: it has to be entered here, empty when
// there is none.
#pragma once

#include "commands/Commander.h"
#include "security/PasswordDialog_win.h"

namespace brennvar {

class EnterPasswordDialog final : public PasswordDialog {
public:
    // The commander is borrowed: it sends the new password to the service.
    EnterPasswordDialog(const PasswordDialogContext& context, Commander& commander);

private:
    void OnStored(const Password& stored) override;

    Commander& m_commander;
};

}  // namespace brennvar
