// Asks for the security password before a protected action. It is entered twice, here as well as when it is set.
#pragma once

#include "security/PasswordDialog_win.h"

namespace brennvar {

class VerifyPasswordDialog final : public PasswordDialog {
public:
    explicit VerifyPasswordDialog(Parts parts);
    // True when the user has entered the password. What is wrong is told and may be tried again.
    [[nodiscard]] bool Ask(HWND owner);

private:
    void OnStored(const Password& stored) override;
};

}  // namespace brennvar
