// A text that can be pressed, for what is offered beside the point: quiet and underlined. It is a BUTTON as any
// other for keyboard, mnemonics, screen readers and automation.
#pragma once

#include <string>

#include "base/Handles_win.h"
#include "ui/Control_win.h"

namespace brennvar {

class CLink final : public CControl {
public:
    // Takes over a push button of a dialog template.
    void Adopt(HWND control, const Look& look);
    // The same for a path, which is a fact before it is a link: at the left, in the colour of texts, cut in the
    // middle, and underlined only under the mouse. "&" in it is no mnemonic.
    void AdoptPath(HWND control, const std::string& path, const Look& look);
    // Between the link's edge and its text. Pixels of the screen.
    [[nodiscard]] static int Padding();
    // What the text takes, with the focus frame. Pixels of the screen.
    [[nodiscard]] int Width() const;
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void OnPaint(HDC dc, const RECT& client) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

    void PaintPath(HDC dc, const RECT& client);

    Palette m_colours;
    UniqueFont m_font;
    HFONT m_plainFont = nullptr;  // of a path that nobody points at
    std::string m_path;           // empty: it is no path
};

}  // namespace brennvar
