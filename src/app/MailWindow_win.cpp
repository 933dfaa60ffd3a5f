#include "app/MailWindow_win.h"

#include <utility>

#include "config/ResourceIds.h"
#include "dialogs/Questions_win.h"
#include "mail/MailTestDialog_win.h"

namespace brennvar {
namespace {

// A file in the folder for temporary ones, which nobody else has opened.
void DeleteTemporary(const MailWish& wish) {
    if (wish.isTemporary) (void)::DeleteFileA(wish.path.c_str());  // what stays, Windows clears away some day
}

}  // namespace

MailWindow::~MailWindow() {
    for (const MailWish& wish : m_wishes) DeleteTemporary(wish);
}

void MailWindow::SetWindow(HWND window) {
    m_window = window;
    OnEnabled();
}

void MailWindow::OpenMailForm(const MailWish& wish) {
    if (!m_window) return DeleteTemporary(wish);
    m_wishes.push_back(wish);
    OnEnabled();
}

void MailWindow::OnEnabled() {
    // Later: the handler that asks, or the dialog that goes, is not over yet.
    if (m_window && !m_wishes.empty()) ::PostMessageA(m_window, WM_COMMAND, IDM_MAIL, 0);
}

void MailWindow::TellSending() const {
    const HWND window = m_open->Window();
    ::SetForegroundWindow(::GetLastActivePopup(window));
    if (!::IsWindowEnabled(window)) return;  // a message stands over it already
    ShowMessage(
        m_session.fonts, m_session.language, window,
        m_session.language.GetText(1817, "A mail is still being sent. Wait until it has been sent, or stop it."));
}

bool MailWindow::OnCommand(int id) {
    if (id == IDM_MAIL) {
        ShowForm();
    } else if (id == IDM_TEST_MAIL_HERE) {
        ShowTest();
    } else {
        return false;
    }
    return true;
}

MailParts MailWindow::Parts() const {
    return {.fonts = m_session.fonts,
            .language = m_session.language,
            .reads = m_session.reads,
            .options = m_session.options,
            .page = m_session.codePage};
}

template <class Dialog>
void MailWindow::ShowDialog(Dialog& dialog) {
    m_open = &dialog;
    m_isSending = [&dialog] { return dialog.IsSending(); };
    dialog.Show(m_window);
    m_isSending = nullptr;
    m_open = nullptr;
}

void MailWindow::ShowForm() {
    // Without a wish the command comes from somebody else. With a dialog over the control center, it comes again
    // when that has gone.
    if (m_wishes.empty() || !MayOpen()) return;
    const MailWish wish = std::move(m_wishes.front());
    m_wishes.pop_front();
    {
        MailDialog dialog(Parts(), wish);
        ShowDialog(dialog);
    }
    DeleteTemporary(wish);
}

void MailWindow::ShowTest() {
    if (!MayOpen()) return;
    MailTestDialog dialog(Parts());
    ShowDialog(dialog);
}

}  // namespace brennvar
