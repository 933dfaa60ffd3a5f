// Sends a mail with the options as they are stored, and shows what is said with the server, line by line, and in
// one sentence which step failed. It starts as soon as it is shown.
#pragma once

#include <optional>

#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "mail/MailRunDialog_win.h"
#include "tree/OutputList_win.h"

namespace brennvar {

class MailTestDialog final : public MailRunDialog {
public:
    explicit MailTestDialog(const MailParts& parts);

    // Returns when it has been closed.
    void Show(HWND owner);

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    void ShowNews() override;
    void ShowState() override;

    void PlaceControls();
    // Reads the options, then sends.
    void Begin();
    void Send(const std::optional<StoredOptions>& options);

    CLabel m_note;
    COutputList m_lines;
    CLabel m_status;
    CButton m_again;
    CButton m_stop;
    CButton m_copy;
    CButton m_close;
    RECT m_card{};  // around the lines

    bool m_isReading = false;
};

}  // namespace brennvar
