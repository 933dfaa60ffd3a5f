// Sets, changes or clears the security password. The old one protects it: it has to be entered here, empty when
// there is none.
#pragma once

#include "security/PasswordDialog_win.h"

namespace brennvar {

class EnterPasswordDialog final : public PasswordDialog {
public:
    // store sends the new password to the service; empty: none any more.
    EnterPasswordDialog(Parts parts, std::function<void(const Password&)> store);

private:
    void OnStored(const Password& stored) override;

    const std::function<void(const Password&)> m_store;
};

}  // namespace brennvar
