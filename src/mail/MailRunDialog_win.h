// What the dialogs that send a mail have in common: a run of the mail on a thread of its own, of which they are
// told every 50 ms what has come, and what becomes of it when they are closed.
//
// Esc stops what is under way, and closes the dialog when nothing is.
#pragma once

#include <optional>

#include "base/TaskQueue.h"
#include "base/WhileAlive.h"
#include "config/CodePage.h"
#include "config/Language.h"
#include "config/OptionSource.h"
#include "dialogs/SkinDialog_win.h"
#include "mail/MailRun_win.h"

namespace brennvar {

// What the dialogs of mail borrow for their life.
struct MailParts {
    const CFonts& fonts;
    const Language& language;
    TaskQueue& reads;
    const OptionSource& options;
    CodePage page = CodePage::Western;  // of the language
};

class MailRunDialog : public CSkinDialog {
public:
    ~MailRunDialog() override { m_run.PostTo(nullptr); }

    [[nodiscard]] bool IsSending() const { return m_run.IsUnderWay(); }

protected:
    explicit MailRunDialog(const MailParts& parts);

    // False while another mail is under way.
    bool StartRun(MailWork work);
    void StopRun() { m_run.RequestStop(); }
    [[nodiscard]] MailNews TakeNews() { return m_run.Take(); }
    // Something may have come.
    virtual void ShowNews() = 0;
    // A run has begun or is over.
    virtual void ShowState() = 0;

    // An override of one of these calls it as well.
    void OnCreateContent() override;
    void OnDestroy() override;

    const MailParts m_parts;
    WhileAlive m_alive;

private:
    void OnTimer(UINT_PTR id) final;
    void OnCancel() final;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) final;
    bool OnLoopMessage(const MSG& message) final;
    void OnFinished();

    bool m_isClosing = false;
    MailRun m_run;
};

}  // namespace brennvar
