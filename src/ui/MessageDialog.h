// A message with OK, or a question with OK and Cancel.
#pragma once

#include <string>

#include "ui/Button.h"
#include "ui/Label.h"
#include "ui/SkinDialog.h"

namespace brennvar {

struct MessageTexts {
    std::string caption;
    std::string message;
    std::string ok;
    std::string cancel;  // empty: OK is the only button
};

class MessageDialog final : public CSkinDialog {
public:
    MessageDialog(const CFonts& fonts, MessageTexts texts);
    // True when the user chose OK. Esc and the close button choose Cancel where there is one.
    bool Ask(HWND owner);

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    [[nodiscard]] bool IsQuestion() const { return !m_texts.cancel.empty(); }

    const MessageTexts m_texts;
    CLabel m_message;
    CButton m_ok;
    CButton m_cancel;
};

}  // namespace brennvar
