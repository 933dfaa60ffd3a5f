// What stands before the protected commands; the password gate implements it.
#pragma once

#include <functional>

namespace brennvar {

class AskPassword {
public:
    virtual ~AskPassword() = default;

    // Runs allowed when no security password is set or the user has entered it, else refused, which may be empty.
    // Always later than this call, in the order of the calls, but for a request that is refused at once because the
    // user is being asked already. User-interface thread.
    virtual void Ask(std::function<void()> allowed, std::function<void()> refused) = 0;
};

}  // namespace brennvar
