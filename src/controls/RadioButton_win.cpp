#include "controls/RadioButton_win.h"

namespace brennvar {

void CRadioButton::Create(HWND parent, const std::string& text, RadioPlace place, int id, const Look& look) {
    Resolve({"RADIO_BUTTON", "radio_button.png", true}, look);
    const DWORD first = place == RadioPlace::FirstOfGroup ? WS_GROUP | WS_TABSTOP : 0U;
    Make(parent, "BUTTON", text, BS_AUTORADIOBUTTON | BS_MULTILINE | first, id, look.fonts.Text());
}

void CRadioButton::Adopt(HWND control, const Look& look) {
    Resolve({"RADIO_BUTTON", "radio_button.png", true}, look);
    Attach(control, look.fonts.Text());
}

}  // namespace brennvar
