#include "security/PasswordCheck.h"

namespace brennvar {

// A wrong password is told first: that the two differ says nothing to who does not know it.
PasswordVerdict CheckChange(const Password& stored, const Password& old, const Password& changed,
                            const Password& confirmation) {
    if (old != stored) return PasswordVerdict::Wrong;
    return changed == confirmation ? PasswordVerdict::Right : PasswordVerdict::Unconfirmed;
}

PasswordVerdict CheckEntered(const Password& stored, const Password& entered, const Password& confirmation) {
    return CheckChange(stored, entered, entered, confirmation);
}

}  // namespace brennvar
