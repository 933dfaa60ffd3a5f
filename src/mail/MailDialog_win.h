// The form that a file is sent by mail with: recipients, subject and text, filled from the options. Sending goes on
// a thread of its own; the form shows how far it is and, when it fails, which step failed.
//
// Esc stops what is under way, and closes the form when nothing is.
#pragma once

#include <optional>
#include <string>

#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "config/CodePage.h"
#include "config/Language.h"
#include "config/OptionSource.h"
#include "controls/Button_win.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"
#include "controls/ProgressBar_win.h"
#include "dialogs/MailWish.h"
#include "dialogs/SkinDialog_win.h"
#include "mail/MailRun_win.h"

namespace brennvar {

// What both dialogs of mail borrow for their life.
struct MailParts {
    const CFonts& fonts;
    const Language& language;
    TaskQueue& reads;
    const OptionSource& options;
    CodePage page = CodePage::Western;  // of the language
};

class MailDialog final : public CSkinDialog {
public:
    MailDialog(const MailParts& parts, MailWish wish);
    ~MailDialog() override { m_run.PostTo(nullptr); }

    // Returns when it has been closed.
    void Show(HWND owner);
    [[nodiscard]] bool IsSending() const { return m_run.IsUnderWay(); }

private:
    struct Row {
        CLabel label;
        CEdit field;
    };
    struct Read {
        std::optional<MailAccount> account;
        std::optional<std::uint64_t> size;  // of the file
    };

    void OnCreateContent() override;
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;
    void OnCancel() override;
    void OnDestroy() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnLoopMessage(const MSG& message) override;

    void AdoptControls();
    void AdoptRow(Row& row, int label, int field, const std::string& text, int limit);
    void PlaceControls();
    LONG PlaceRow(const Row& row, LONG top, int labelWidth, int height) const;
    void AskForOptions();
    void TakeOptions(const Read& read);
    void Send();
    void ShowNews();
    void OnFinished();
    void ShowState();

    const MailParts m_parts;
    const MailWish m_wish;
    Row m_to;
    Row m_cc;
    Row m_subject;
    Row m_text;
    CLabel m_file;
    CProgressBar m_progress;
    CLabel m_status;
    CButton m_send;
    CButton m_stop;
    CButton m_close;

    std::optional<MailAccount> m_account;
    bool m_isClosing = false;
    bool m_wasSent = false;
    WhileAlive m_alive;
    MailRun m_run;
};

}  // namespace brennvar
