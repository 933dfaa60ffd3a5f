// What stands before every command that changes options, rules or the protection mode, or ends the program: where a
// security password is set, the user has to enter it first. User-interface thread only.
#pragma once

#include <functional>
#include <optional>

#include "base/Clock.h"
#include "base/TaskThread.h"
#include "base/Windows_win.h"
#include "config/Language.h"
#include "ipc/ServiceLink.h"
#include "security/PasswordDialog_win.h"
#include "ui/Fonts_win.h"

namespace brennvar {

class SecurityPasswordGate {
public:
    // Borrowed for the life of the program.
    struct Parts {
        const CFonts& fonts;
        const Language& language;
        ServiceLink& link;  // gets the event report
        TaskThread& reads;  // reads the stored password, which may have to wait for the service
        Clock& readsClock;  // of that thread
    };
    explicit SecurityPasswordGate(const Parts& parts) : m_parts(parts) {}

    struct Request {
        HWND owner = nullptr;  // of the question for the password
        std::function<void()> action;
        std::function<void()> refused;  // may be empty
    };
    // Runs the action when no password is set or the user has entered it, always later than this call, in the order
    // of the requests. What the user answered is reported to the service before. The question opens over the owner
    // or over the dialog that is open over it; without one of them that takes input (a connection question is open)
    // the request is refused. One that comes while the user is asked for the password is refused at once.
    void CheckSecurityPassword(Request request);
    // Lets the user set, change or clear the password; asks for the old one itself. Does nothing when it is not the
    // owner's turn, as above.
    void SetSecurityPassword(HWND owner);
    // One of these dialogs is open.
    [[nodiscard]] bool IsAsking() const { return m_dialog != nullptr; }
    // Shows it to the user, who may have forgotten it behind other windows. Only while IsAsking.
    void ComeForward() const;

private:
    void ReadStored(std::function<void(const Password&)> done);
    [[nodiscard]] PasswordDialog::Parts DialogParts();
    void OnPasswordRead(const Request& request, const Password& stored);
    [[nodiscard]] bool AskForPassword(HWND owner);
    // Nothing when a dialog cannot open now; one of these that is open comes forward.
    [[nodiscard]] std::optional<HWND> OwnerOfDialog(HWND owner) const;
    // True when the dialog ended with OK.
    [[nodiscard]] bool Show(PasswordDialog& dialog, HWND owner, bool isVerifying);
    void Report(const Text& title, const Text& subject);

    const Parts m_parts;
    const PasswordDialog* m_dialog = nullptr;  // the one that is open
    bool m_isVerifying = false;                // which it is
};

}  // namespace brennvar
