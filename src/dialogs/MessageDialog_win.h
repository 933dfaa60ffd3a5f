// A message with OK, or a question with OK and Cancel, and with another answer between them where there is one.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "controls/Button_win.h"
#include "controls/Label_win.h"
#include "dialogs/SkinDialog_win.h"

namespace brennvar {

// What kind of message it is; the picture beside the text says so by its shape.
enum class MessageSign : std::uint8_t {
    Information,
    Question,
    Warning,  // a triangle: agreeing loses something
    Failure,  // a red disc with a cross: what was wanted has not been done
};

struct MessageTexts {
    std::string caption;
    std::string message;
    std::string ok;
    std::string cancel;      // empty: OK is the only button
    std::string other = {};  // the caption of a third button; only with Cancel
    // Enter cancels: for what cannot be undone, and must not come of a key that is pressed too long.
    bool isCancelDefault = false;
    // None: a warning when Enter cancels, a question when there is something else to choose, else information.
    std::optional<MessageSign> sign = std::nullopt;
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
    [[nodiscard]] MessageSign Sign() const;

    const MessageTexts m_texts;
    CLabel m_message;
    CButton m_ok;
    CButton m_other;
    CButton m_cancel;
};

}  // namespace brennvar
