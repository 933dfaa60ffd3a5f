// A message with OK, or a question with OK and Cancel, and with another answer between them where there is one.
#pragma once

#include <string>

#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

struct MessageTexts {
    std::string caption;
    std::string message;
    std::string ok;
    std::string cancel;      // empty: OK is the only button
    std::string other = {};  // the caption of a third button; only with Cancel
    // Enter cancels: for what cannot be undone, and must not come of a key that is pressed too long.
    bool isCancelDefault = false;
};

enum class MessageAnswer { Ok, Other, Cancel };

class MessageDialog : public CSkinDialog {
public:
    MessageDialog(const CFonts& fonts, MessageTexts texts);
    // What the user chose. Esc and the close button choose Cancel, also where there is no button for it.
    MessageAnswer Choose(HWND owner);
    // True when the user chose OK.
    bool Ask(HWND owner) { return Choose(owner) == MessageAnswer::Ok; }
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void OnCreateContent() override;
    void OnPaintGround(HDC dc) override;
    void OnCommand(int id, int notification) override;
    [[nodiscard]] bool IsQuestion() const { return !m_texts.cancel.empty(); }

    const MessageTexts m_texts;
    CLabel m_message;
    CButton m_ok;
    CButton m_other;
    CButton m_cancel;
};

}  // namespace brennvar
