// The arrow at the right end of a field whose text can be picked as well as typed.
#pragma once

#include <string>

#include "controls/FieldFrame_win.h"
#include "ui/Control_win.h"

namespace brennvar {

// A BUTTON; the parent gets BN_CLICKED, opens what can be picked, and gives the keyboard back to the field. Tab
// does not reach it: as with a combo box, the field's own keys open the list (F4, Alt and the down key), which the
// parent looks after.
class CDropButton final : public CControl {
public:
    // name: what it does, for screen readers. Made visible, of no size yet.
    void Create(HWND parent, const std::string& name, int id, const Look& look);
    // At the right of a field's place, whose frame then ends here: what is left for the field.
    [[nodiscard]] RECT PlaceIn(const RECT& field) const;
    void TellAccessible(AccessibleThing& thing) const override { TellButton(thing); }

private:
    void OnPaint(HDC dc, const RECT& client) override;

    Palette m_colours;
};

}  // namespace brennvar
