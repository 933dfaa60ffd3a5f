// Asks the user about one connection. Who is at the other side can be asked the network tools meanwhile.
#pragma once

#include "base/Ipv4.h"
#include "dialogs/AddressTools.h"
#include "prompts/PromptQuestion.h"
#include "prompts/QuestionDialog_win.h"

namespace brennvar {

class ConfirmationDialog final : public QuestionDialog {
public:
    // Fonts and tools are borrowed for the life of the dialog.
    ConfirmationDialog(const CFonts& fonts, AddressTools& tools, const PromptQuestion& question);

private:
    [[nodiscard]] static Content ContentOf(const PromptQuestion& question);
    void OnLink(HWND link) override;

    AddressTools& m_tools;
    const Ipv4 m_address;
};

}  // namespace brennvar
