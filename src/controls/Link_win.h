// A text that can be pressed, for what is offered beside the point: quiet and underlined. It is a BUTTON as any
// other for keyboard, mnemonics, screen readers and automation.
#pragma once

#include "base/Handles_win.h"
#include "ui/Control_win.h"

namespace brennvar {

class CLink final : public CControl {
public:
    // Takes over a push button of a dialog template.
    void Adopt(HWND control, const Look& look);
    // What the text takes, with the focus frame. Pixels of the screen.
    [[nodiscard]] int Width() const;
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void OnPaint(HDC dc, const RECT& client) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    Palette m_colours;
    UniqueFont m_font;
};

}  // namespace brennvar
