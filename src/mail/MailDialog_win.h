// The form that a file is sent by mail with: recipients, subject and text, filled from the options. Sending goes on
// a thread of its own; the form shows how far it is and, when it fails, which step failed.
#pragma once

#include <optional>
#include <string>

#include "controls/Button_win.h"
#include "controls/Edit_win.h"
#include "controls/Label_win.h"
#include "controls/ProgressBar_win.h"
#include "dialogs/MailWish.h"
#include "mail/MailRunDialog_win.h"

namespace brennvar {

class MailDialog final : public MailRunDialog {
public:
    MailDialog(const MailParts& parts, MailWish wish);

    // Returns when it has been closed.
    void Show(HWND owner);

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
    void ShowNews() override;
    void ShowState() override;

    void AdoptControls();
    void AdoptRow(Row& row, int label, int field, const std::string& text, int limit);
    void PlaceControls();
    LONG PlaceRow(const Row& row, LONG top, int labelWidth, int height) const;
    void AskForOptions();
    void TakeOptions(const Read& read);
    void Send();

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
    bool m_wasSent = false;
};

}  // namespace brennvar
