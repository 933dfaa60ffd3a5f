// Sends a mail with the options as they are stored, and shows what is said with the server, line by line, and in
// one sentence which step failed. It starts as soon as it is shown.
//
// Esc stops what is under way, and closes the dialog when nothing is.
#pragma once

#include <optional>

#include "base/WhileAlive.h"
#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"
#include "mail/MailDialog_win.h"
#include "mail/MailRun_win.h"
#include "tree/OutputList_win.h"

namespace brennvar {

class MailTestDialog final : public CSkinDialog {
public:
    explicit MailTestDialog(const MailParts& parts);
    ~MailTestDialog() override { m_run.PostTo(nullptr); }

    // Returns when it has been closed.
    void Show(HWND owner);
    [[nodiscard]] bool IsSending() const { return m_run.IsUnderWay(); }

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;
    void OnCancel() override;
    void OnDestroy() override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    bool OnLoopMessage(const MSG& message) override;

    void PlaceControls();
    // Reads the options, then sends.
    void Begin();
    void Send(const std::optional<StoredOptions>& options);
    void ShowNews();
    void OnFinished();
    void ShowState();

    const MailParts m_parts;
    CLabel m_note;
    COutputList m_lines;
    CLabel m_status;
    CButton m_again;
    CButton m_stop;
    CButton m_copy;
    CButton m_close;
    RECT m_card{};  // around the lines

    bool m_isReading = false;
    bool m_isClosing = false;
    WhileAlive m_alive;
    MailRun m_run;
};

}  // namespace brennvar
