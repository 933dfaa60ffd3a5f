#include "controls/DropButton_win.h"

#include "ui/Paint_win.h"

namespace brennvar {

void CDropButton::Create(HWND parent, const std::string& name, int id, const Look& look) {
    m_colours = look.colours;
    Make(parent, "BUTTON", name, BS_PUSHBUTTON, id, look.fonts.Text());
}

RECT CDropButton::PlaceIn(const RECT& field) const {
    const LONG left = field.right - Scale(kDropArrowWidth);
    Place({left, field.top, field.right, field.bottom});
    // One line of the frames is shared.
    return {field.left, field.top, left + 1, field.bottom};
}

void CDropButton::OnPaint(HDC dc, const RECT& client) {
    const FieldState state = IsEnabled() ? FieldState::Rest : FieldState::Disabled;
    FillSolid(dc, client, FieldGround(m_colours, state));
    DrawFieldFrame(dc, client, m_colours, state);
    DrawDropArrow(dc, client, IsEnabled() && !IsHot() ? m_colours.quietText : FieldText(m_colours, state));
}

}  // namespace brennvar
