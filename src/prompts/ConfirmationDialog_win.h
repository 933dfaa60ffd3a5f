// Asks the user about one connection. The question opens above all other windows and leaves the keyboard where it
// is; its buttons do not work at first, so that nobody answers it by accident.
#pragma once

#include "base/Handles_win.h"
#include "controls/Button_win.h"
#include "controls/CheckBox_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"
#include "prompts/PromptQuestion.h"

namespace brennvar {

class ConfirmationDialog final : public CSkinDialog {
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
    void OnCreateContent() override;
    [[nodiscard]] RECT OpeningPlace(SIZE size) const override;
    void OnPaintGround(HDC dc) override;
    void OnCancel() override;
    void OnCommand(int id, int notification) override;
    void OnTimer(UINT_PTR id) override;
    void OnDrawItem(const DRAWITEMSTRUCT& item) override;

    void AdoptControls();
    void PlaceControls();
    void PaintTable(HDC dc, const RECT& card) const;
    void PaintAdvice(HDC dc, const RECT& place) const;
    void SetButtonsEnabled(bool enabled);
    void Answer(int result);

    const PromptQuestion& m_question;
    UniqueIcon m_icon;
    CLabel m_name;
    CLabel m_path;
    CLabel m_wants;
    CLabel m_host;
    CLabel m_service;
    CCheckBox m_rememberBox;
    CButton m_allow;
    CButton m_deny;
    bool m_buttonsWork = false;
    bool m_remember = false;
};

}  // namespace brennvar
