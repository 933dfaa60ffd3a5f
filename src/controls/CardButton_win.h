// The ground of a card that opens something: a button over what its parent has drawn there. It shows only that it
// can be pressed. Its text is for screen readers: what the card says.
#pragma once

#include <string>

#include "ui/Control_win.h"

namespace brennvar {

class CCardButton final : public CControl {
public:
    // Made visible, of no size yet; a tab stop. The parent gets BN_CLICKED. Whoever changes what the card shows
    // gives the button another text, and it is painted anew.
    void Create(HWND parent, const std::string& text, int id, const Look& look);

    [[nodiscard]] bool TellParts(PictureParts& parts) const override;
    void TellAccessible(AccessibleThing& thing) const override { TellButton(thing); }

private:
    [[nodiscard]] bool IsPressed() const;
    void OnPaint(HDC dc, const RECT& client) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    Palette m_colours;
};

}  // namespace brennvar
