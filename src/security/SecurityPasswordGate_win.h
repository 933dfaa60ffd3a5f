// What stands before every command that changes options, rules or the protection mode, or ends the program: where a
// security password is set, the user has to enter it first. Where it cannot be told whether one is set, the command
// is refused. User-interface thread only.
#pragma once

#include <functional>
#include <optional>

#include "base/TaskQueue.h"
#include "base/Windows_win.h"
#include "commands/AskPassword.h"
#include "commands/Commander.h"
#include "config/Language.h"
#include "security/PasswordDialog_win.h"
#include "security/StoredPassword.h"
#include "ui/Fonts_win.h"

namespace brennvar {

class SecurityPasswordGate final : public AskPassword {
public:
    // The stored password is read on the queue's thread. What the user answered goes to the commander. All are
    // borrowed for the life of the program.
    SecurityPasswordGate(const CFonts& fonts, const Language& language, Commander& commander, TaskQueue& reads,
                         const PasswordSource& stored);

    // The window that the questions belong to.
    void SetOwner(HWND owner) { m_owner = owner; }

    // As AskPassword says. What the user answered is reported to the service before. The question opens over the
    // owner, over the dialog that is open over it, or over a connection question; without one of them that takes
    // input the request is refused. One that comes while the user is asked for the password is refused at once.
    void Ask(std::function<void()> allowed, std::function<void()> refused) override;
    // Lets the user set, change or clear the password; asks for the old one itself. Does nothing when it is not the
    // owner's turn, as above.
    void SetSecurityPassword();
    // One of these dialogs is open.
    [[nodiscard]] bool IsAsking() const { return m_dialog != nullptr; }
    // Shows it to the user, who may have forgotten it behind other windows. Only while IsAsking.
    void ComeForward() const;

private:
    [[nodiscard]] PasswordDialogContext Context() const;
    // stored: as it was read; nothing: it could not be. Whether the user may go on.
    [[nodiscard]] bool Check(const std::optional<Password>& stored);
    [[nodiscard]] bool AskUser();
    void TellUnreadable();
    // Nothing when a dialog cannot open now; one of these that is open comes forward.
    [[nodiscard]] std::optional<HWND> PlaceOfDialog() const;
    // True when the dialog ended with OK.
    [[nodiscard]] bool Show(PasswordDialog& dialog, HWND owner, bool isVerifying);

    const CFonts& m_fonts;
    const Language& m_language;
    Commander& m_commander;
    TaskQueue& m_reads;
    const PasswordSource& m_stored;
    HWND m_owner = nullptr;
    const PasswordDialog* m_dialog = nullptr;  // the one that is open
    bool m_isVerifying = false;                // which it is
    bool m_isTelling = false;                  // that the password cannot be read
};

}  // namespace brennvar
