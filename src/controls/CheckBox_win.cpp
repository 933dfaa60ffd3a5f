#include "controls/CheckBox_win.h"

namespace brennvar {

void CCheckBox::Create(HWND parent, const std::string& text, int id, const Look& look) {
    Resolve({"CHECK_BUTTON", "check_button.png", false}, look);
    Make(parent, "BUTTON", text, BS_AUTOCHECKBOX | BS_MULTILINE | WS_TABSTOP, id, look.fonts.Text());
}

void CCheckBox::Adopt(HWND control, const Look& look) {
    Resolve({"CHECK_BUTTON", "check_button.png", false}, look);
    Attach(control, look.fonts.Text());
}

}  // namespace brennvar
