// Asks for the security password before a protected action. It is entered twice, here as well as when it is set.
#pragma once

#include "security/PasswordDialog_win.h"

namespace brennvar {

class VerifyPasswordDialog final : public PasswordDialog {
public:
    explicit VerifyPasswordDialog(const PasswordDialogContext& context);

private:
    void OnStored(const Password& stored) override;
};

}  // namespace brennvar
