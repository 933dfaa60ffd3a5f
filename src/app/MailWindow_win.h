// The windows of mail: the form that sends a file, and the test of the options for mail. One of them is open at a
// time, over the control center; a form that is wanted while another dialog stands over it waits for its turn.
// User-interface thread only.
#pragma once

#include <deque>
#include <functional>

#include "app/Session_win.h"
#include "base/Windows_win.h"
#include "dialogs/MailWish.h"
#include "mail/MailDialog_win.h"

namespace brennvar {

class MailWindow final : public MailForms {
public:
    // Borrowed.
    explicit MailWindow(Session& session) : m_session(session) {}
    ~MailWindow() override;
    MailWindow(const MailWindow&) = delete;
    MailWindow& operator=(const MailWindow&) = delete;

    // The control center, from when it is there until it goes; null: there is none.
    void SetWindow(HWND window);
    // The control center can be used again (WM_ENABLE).
    void OnEnabled();
    void OpenMailForm(const MailWish& wish) override;
    // True for a command of these.
    bool OnCommand(int id);
    // A mail is on its way: the program is not left meanwhile.
    [[nodiscard]] bool IsSending() const { return m_isSending && m_isSending(); }
    // Says so, before the user's eyes. While one is on its way only.
    void TellSending() const;

private:
    void ShowForm();
    void ShowTest();
    // Where a dialog may open; nothing while another one is open.
    [[nodiscard]] bool MayOpen() const { return m_window && !m_open && ::IsWindowEnabled(m_window); }
    template <class Dialog>
    void ShowDialog(Dialog& dialog);
    [[nodiscard]] MailParts Parts() const;

    Session& m_session;
    HWND m_window = nullptr;
    std::deque<MailWish> m_wishes;      // until their forms open
    const CDialog* m_open = nullptr;    // the dialog that is open
    std::function<bool()> m_isSending;  // of it
};

}  // namespace brennvar
