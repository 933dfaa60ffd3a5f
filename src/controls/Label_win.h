// Texts that are only read: field names, hints, titles.
#pragma once

#include <string>

#include "ui/Control_win.h"

namespace brennvar {

enum class LabelKind {
    Plain,
    Quiet,  // what explains another text
    Bold,
    Title,  // a page's or a dialog's name
};

// What a kind and a STATIC's style mean where a text is drawn: font, colour, flags for DrawText.
[[nodiscard]] HFONT LabelFont(LabelKind kind, const CFonts& fonts);
[[nodiscard]] COLORREF LabelColour(LabelKind kind, const Palette& colours);
[[nodiscard]] UINT LabelFormat(DWORD style);

// A STATIC whose window text is what it shows, over the parent's ground. A mnemonic in it leads to the next
// control.
class CLabel final : public CControl {
public:
    // style: SS_LEFT (lines are broken), SS_CENTER, SS_RIGHT, SS_LEFTNOWORDWRAP, and with them SS_ENDELLIPSIS or
    // SS_PATHELLIPSIS (one line, cut), SS_CENTERIMAGE (one line, in the middle of the height), SS_NOPREFIX ("&" is
    // no mnemonic). Made visible, of no size yet.
    void Create(HWND parent, const std::string& text, LabelKind kind, DWORD style, int id, const Look& look);
    // Takes over a text of a dialog template, whose style counts as above.
    void Adopt(HWND control, LabelKind kind, const Look& look);

    // Another colour than the kind's.
    void SetColour(COLORREF colour);
    // The size of the text as it stands, broken into lines of at most this width (0: not broken). Pixels of the
    // screen.
    [[nodiscard]] SIZE Measure(int width) const;
    void TellAccessible(AccessibleThing& thing) const override;

private:
    void Resolve(LabelKind kind, const Look& look);
    void OnPaint(HDC dc, const RECT& client) override;

    COLORREF m_colour = 0;
    COLORREF m_disabledColour = 0;
};

}  // namespace brennvar
