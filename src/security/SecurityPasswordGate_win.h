// What stands before every command that changes options, rules or the protection mode, or ends the program: where a
// security password is set, the user has to enter it first. User-interface thread only.
#pragma once

#include <functional>
#include <string>

#include "base/Clock.h"
#include "base/Windows_win.h"
#include "config/Language.h"
#include "ipc/LinkThread.h"
#include "ipc/ServiceLink.h"
#include "ui/Fonts.h"

namespace brennvar {

class SecurityPasswordGate {
public:
    // Borrowed for the life of the program.
    struct Parts {
        const CFonts& fonts;
        const Language& language;
        ServiceLink& link;  // gets the event report
        LinkThread& reads;  // reads the stored password, which may have to wait for the service
        Clock& readsClock;  // of that thread
    };
    explicit SecurityPasswordGate(const Parts& parts) : m_parts(parts) {}

    struct Request {
        HWND owner = nullptr;  // of the question for the password
        std::function<void()> action;
        std::function<void()> refused;  // may be empty
    };
    // Runs the action when no password is set or the user has entered it, always later than this call, in the order
    // of the requests. One that comes while the user is asked for the password is refused at once.
    void CheckSecurityPassword(Request request);
    [[nodiscard]] bool IsAsking() const { return m_isAsking; }

private:
    void OnPasswordRead(Request request, const std::string& password);
    // True when the user has entered it.
    [[nodiscard]] bool AskForPassword(HWND owner);

    const Parts m_parts;
    bool m_isAsking = false;
};

}  // namespace brennvar
