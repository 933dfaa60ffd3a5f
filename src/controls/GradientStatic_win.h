// Headings on a band that runs from one colour into another.
#pragma once

#include <string>

#include "ui/Control_win.h"

namespace brennvar {

// A STATIC whose window text is its heading.
class CGradientStatic final : public CControl {
public:
    // Makes it, visible, of no size yet.
    void Create(HWND parent, const std::string& text, int id, const Look& look);
    // Takes over a text of a dialog template.
    void Adopt(HWND control, const Look& look);
    void TellAccessible(AccessibleThing& thing) const override {
        thing.role = AccessibleRole::StaticText;
        thing.name = Text();
    }

private:
    void Resolve(const Look& look);
    void OnPaint(HDC dc, const RECT& client) override;

    COLORREF m_left = 0;
    COLORREF m_right = 0;
    COLORREF m_text = 0;
};

}  // namespace brennvar
