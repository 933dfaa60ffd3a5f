// What a password that was entered is compared with.
#pragma once

#include "base/Password.h"

namespace brennvar {

enum class PasswordVerdict {
    Wrong,        // not the password that is stored
    Unconfirmed,  // entered differently the second time
    Right,
};

// Before a protected action: what was entered twice.
[[nodiscard]] PasswordVerdict CheckEntered(const Password& stored, const Password& entered,
                                           const Password& confirmation);
// Before a change; without a stored password the old one must have been left empty.
[[nodiscard]] PasswordVerdict CheckChange(const Password& stored, const Password& old, const Password& changed,
                                          const Password& confirmation);

}  // namespace brennvar
