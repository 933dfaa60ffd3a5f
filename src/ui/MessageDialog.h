// A message with OK, or a question with OK and Cancel.
#pragma once

#include <string>

#include "ui/Dialog.h"
#include "ui/Fonts.h"

namespace brennvar {

struct MessageTexts {
    std::string caption;
    std::string message;
    std::string ok;
    std::string cancel;  // empty: OK is the only button
};

class MessageDialog final : public CDialog {
public:
    MessageDialog(const CFonts& fonts, MessageTexts texts);
    // True when the user chose OK. Esc and the close button choose Cancel where there is one.
    bool Ask(HWND owner);

private:
    void OnInitDialog() override;
    void OnCommand(int id, int notification) override;

    const CFonts& m_fonts;
    const MessageTexts m_texts;
};

}  // namespace brennvar
