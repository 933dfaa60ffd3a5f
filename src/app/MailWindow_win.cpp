#include "app/MailWindow_win.h"

#include <utility>

#include "config/ResourceIds.h"
#include "mail/MailTestDialog_win.h"

namespace brennvar {
namespace {

// A file in the folder for temporary ones, which nobody else has opened.
void DeleteTemporary(const MailWish& wish) {
    if (wish.isTemporary) (void)::DeleteFileA(wish.path.c_str());  // what stays, Windows clears away some day
}

}  // namespace

MailWindow::~MailWindow() {
    if (m_wish) DeleteTemporary(*m_wish);
}

void MailWindow::OpenMailForm(const MailWish& wish) {
    if (m_wish || !MayOpen()) return DeleteTemporary(wish);
    m_wish = wish;
    ::PostMessageA(m_window, WM_COMMAND, IDM_MAIL, 0);
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
    m_isOpen = true;
    m_isSending = [&dialog] { return dialog.IsSending(); };
    dialog.Show(m_window);
    m_isSending = nullptr;
    m_isOpen = false;
}

void MailWindow::ShowForm() {
    // Without a wish the command comes from somebody else.
    const std::optional<MailWish> wish = std::exchange(m_wish, std::nullopt);
    if (!wish) return;
    if (MayOpen()) {
        MailDialog dialog(Parts(), *wish);
        ShowDialog(dialog);
    }
    DeleteTemporary(*wish);
}

void MailWindow::ShowTest() {
    if (!MayOpen()) return;
    MailTestDialog dialog(Parts());
    ShowDialog(dialog);
}

}  // namespace brennvar
