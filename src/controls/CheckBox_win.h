// Check boxes.
#pragma once

#include <string>

#include "controls/Toggle_win.h"

namespace brennvar {

// A BUTTON that checks itself (BS_AUTOCHECKBOX): Space, a click, BM_CLICK; the parent gets BN_CLICKED.
class CCheckBox final : public CToggle {
public:
    // Makes it, visible, of no size yet; the text may take several lines.
    void Create(HWND parent, const std::string& text, int id, const Look& look);
    // Takes over a check box of a dialog template.
    void Adopt(HWND control, const Look& look);
};

}  // namespace brennvar
