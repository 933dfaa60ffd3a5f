// Radio buttons.
#pragma once

#include <string>

#include "controls/Toggle_win.h"

namespace brennvar {

enum class RadioPlace { FirstOfGroup, Further };

// A BUTTON of a group of which one is checked (BS_AUTORADIOBUTTON); the arrow keys move within the group, which
// reaches from one control with WS_GROUP to the next.
class CRadioButton final : public CToggle {
public:
    // Makes it, visible, of no size yet. The first of a group takes Tab, until another one is checked.
    void Create(HWND parent, const std::string& text, RadioPlace place, int id, const Look& look);
    // Takes over a radio button of a dialog template.
    void Adopt(HWND control, const Look& look);
};

}  // namespace brennvar
