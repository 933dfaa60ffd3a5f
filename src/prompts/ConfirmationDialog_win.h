// Asks the user about one connection. The question opens above all other windows and leaves the keyboard where it
// is; its buttons do not work at first, so that nobody answers it by accident.
#pragma once

#include "base/Handles_win.h"
#include "prompts/PromptQuestion.h"
#include "ui/Dialog.h"
#include "ui/Fonts.h"

namespace brennvar {

class ConfirmationDialog final : public CDialog {
public:
    // How long the buttons stay disabled: longer than a click or a key that was meant for another window takes.
    static constexpr UINT kButtonDelay = 700;  // ms
    static constexpr UINT_PTR kButtonTimer = 1;

    // All are borrowed for the life of the dialog.
    ConfirmationDialog(const CFonts& fonts, const PromptQuestion& question);

    // Returns when the question is answered; messages of all windows of this thread go on meanwhile, but the owner
    // takes no input. Esc and the close button deny this once, whatever the check box says.
    PromptAnswer Ask(HWND owner);

private:
    void OnInitDialog() override;
    void OnCancel() override;
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;
    void OnDrawItem(const DRAWITEMSTRUCT& item) override;

    void PlaceControls();
    void SetButtonsEnabled(bool enabled);
    void Answer(int result);

    const CFonts& m_fonts;
    const PromptQuestion& m_question;
    UniqueIcon m_icon;
    bool m_buttonsWork = false;
    bool m_remember = false;
};

}  // namespace brennvar
