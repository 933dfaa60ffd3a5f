#include "security/SecurityPasswordGate_win.h"

#include <utility>

#include "base/FlagWhile.h"
#include "dialogs/ModalPlace_win.h"
#include "dialogs/Questions_win.h"
#include "security/EnterPasswordDialog_win.h"
#include "security/VerifyPasswordDialog_win.h"

namespace brennvar {

SecurityPasswordGate::SecurityPasswordGate(const CFonts& fonts, const Language& language, Commander& commander,
                                           TaskQueue& reads, const PasswordSource& stored)
    : m_fonts(fonts), m_language(language), m_commander(commander), m_reads(reads), m_stored(stored) {}

PasswordDialogContext SecurityPasswordGate::Context() const {
    return {.fonts = m_fonts, .language = m_language, .reads = m_reads, .stored = m_stored};
}

void SecurityPasswordGate::Ask(std::function<void()> allowed, std::function<void()> refused) {
    if (m_isVerifying) {
        ComeForward();
        if (refused) refused();
        return;
    }
    using Stored = std::optional<Password>;
    m_reads.Ask<Stored>(
        [&stored = m_stored] { return stored.Read(); },
        [this, allowed = std::move(allowed), refused = std::move(refused)](const std::optional<Stored>& answer) {
            bool isAllowed = false;
            bool isUnreadable = false;
            try {
                const Stored stored = answer.value_or(std::nullopt);
                isUnreadable = !stored;
                isAllowed = Check(stored);
            } catch (...) {
                // Without memory for the dialog, say: whoever asked is told, or would wait for ever.
                if (refused) refused();
                throw;
            }
            if (isAllowed) return allowed();
            if (refused) refused();
            if (isUnreadable) TellUnreadable();
        });
}

bool SecurityPasswordGate::Check(const std::optional<Password>& stored) {
    if (stored) return stored->IsEmpty() || AskUser();
    m_commander.Send(Batch(UserCommand::PasswordRefused));
    return false;
}

void SecurityPasswordGate::TellUnreadable() {
    const std::optional<HWND> place = PlaceOfDialog();
    if (!place || m_isTelling) return;
    const FlagWhile telling(m_isTelling);
    ShowMessage(m_fonts, m_language, *place, m_language.GetText(PasswordDialog::kUnreadable), MessageSign::Failure);
}

bool SecurityPasswordGate::Show(PasswordDialog& dialog, HWND owner, bool isVerifying) {
    struct Open {  // closed again whatever is thrown
        Open(SecurityPasswordGate& gate, const PasswordDialog& dialog, bool isVerifying) : gate(gate) {
            gate.m_dialog = &dialog;
            gate.m_isVerifying = isVerifying;
        }
        Open(const Open&) = delete;
        Open& operator=(const Open&) = delete;
        ~Open() {
            gate.m_dialog = nullptr;
            gate.m_isVerifying = false;
        }
        SecurityPasswordGate& gate;
    };
    const Open open(*this, dialog, isVerifying);
    return dialog.Ask(owner);
}

std::optional<HWND> SecurityPasswordGate::PlaceOfDialog() const {
    if (m_dialog) {
        ComeForward();
        return std::nullopt;
    }
    if (const std::optional<HWND> place = ModalOwner(m_owner)) return place;
    // "Block All" does not wait until a question is answered.
    const HWND question = StandingQuestion();
    return question ? std::optional(question) : std::nullopt;
}

void SecurityPasswordGate::ComeForward() const {
    ::SetForegroundWindow(::GetLastActivePopup(m_dialog->Window()));
}

bool SecurityPasswordGate::AskUser() {
    const std::optional<HWND> place = PlaceOfDialog();
    if (!place) return false;
    VerifyPasswordDialog dialog(Context());
    const bool isValid = Show(dialog, *place, true);
    m_commander.Send(Batch(isValid ? UserCommand::PasswordEntered : UserCommand::PasswordRefused));
    return isValid;
}

void SecurityPasswordGate::SetSecurityPassword() {
    const std::optional<HWND> place = PlaceOfDialog();
    if (!place) return;
    EnterPasswordDialog dialog(Context(), m_commander);
    (void)Show(dialog, *place, false);
}

}  // namespace brennvar
