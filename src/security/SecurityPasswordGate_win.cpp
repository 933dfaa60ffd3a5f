#include "security/SecurityPasswordGate_win.h"

#include <memory>
#include <optional>
#include <utility>

#include "config/Folders_win.h"
#include "config/OptionTable.h"
#include "dialogs/ModalPlace_win.h"
#include "security/EnterPasswordDialog_win.h"
#include "security/StoredPassword.h"
#include "security/VerifyPasswordDialog_win.h"

namespace brennvar {

void SecurityPasswordGate::ReadStored(std::function<void(const Password&)> done) {
    m_parts.reads.Ask<Password>(
        [&clock = m_parts.readsClock] { return ReadStoredPassword(GetDataFolder(), clock); },
        [done = std::move(done)](const std::optional<Password>& stored) { done(stored.value_or(Password())); });
}

PasswordDialog::Parts SecurityPasswordGate::DialogParts() {
    return {.fonts = m_parts.fonts,
            .language = m_parts.language,
            .readStored = [this](std::function<void(const Password&)> done) { ReadStored(std::move(done)); }};
}

void SecurityPasswordGate::CheckSecurityPassword(Request request) {
    if (m_isVerifying) {
        ComeForward();
        if (request.refused) request.refused();
        return;
    }
    ReadStored([this, kept = std::make_shared<const Request>(std::move(request))](const Password& stored) {
        OnPasswordRead(*kept, stored);
    });
}

void SecurityPasswordGate::OnPasswordRead(const Request& request, const Password& stored) {
    if (stored.IsEmpty() || AskForPassword(request.owner)) {
        request.action();
    } else if (request.refused) {
        request.refused();
    }
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

std::optional<HWND> SecurityPasswordGate::OwnerOfDialog(HWND owner) const {
    if (!m_dialog) return ModalOwner(owner);
    ComeForward();
    return std::nullopt;
}

void SecurityPasswordGate::ComeForward() const {
    ::SetForegroundWindow(::GetLastActivePopup(m_dialog->Window()));
}

bool SecurityPasswordGate::AskForPassword(HWND owner) {
    const std::optional<HWND> place = OwnerOfDialog(owner);
    if (!place) return false;
    VerifyPasswordDialog dialog(DialogParts());
    const bool isValid = Show(dialog, *place, true);
    Report(Text{186, "Security password entered"}, isValid ? Text{187, "Valid"} : Text{188, "Invalid"});
    return isValid;
}

void SecurityPasswordGate::SetSecurityPassword(HWND owner) {
    const std::optional<HWND> place = OwnerOfDialog(owner);
    if (!place) return;
    EnterPasswordDialog dialog(DialogParts(), [&link = m_parts.link](const Password& changed) {
        link.Send([changed](CommandPipe& pipe) {
            pipe.CMD_SET_OPTION_TEXT(static_cast<std::uint32_t>(OptionId::Password), changed.View());
        });
    });
    if (Show(dialog, *place, false)) Report(Text{195, "Options changed"}, Text{197, "Password"});
}

void SecurityPasswordGate::Report(const Text& title, const Text& subject) {
    m_parts.link.Send([&language = m_parts.language, title, subject](CommandPipe& pipe) {
        pipe.CMD_EVENT_REPORT(language.GetText(title), language.GetText(subject), 0, "");
    });
}

}  // namespace brennvar
