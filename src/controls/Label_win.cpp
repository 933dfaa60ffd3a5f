#include "controls/Label_win.h"

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kDisabledShare = 90;  // towards the page

}  // namespace

HFONT LabelFont(LabelKind kind, const CFonts& fonts) {
    switch (kind) {
        case LabelKind::Bold: return fonts.Bold();
        case LabelKind::Title: return fonts.Title();
        default: return fonts.Text();
    }
}

COLORREF LabelColour(LabelKind kind, const Palette& colours) {
    return kind == LabelKind::Quiet ? colours.quietText : colours.text;
}

UINT LabelFormat(DWORD style) {
    UINT format = DT_EXPANDTABS;
    const DWORD type = style & SS_TYPEMASK;
    if (type == SS_CENTER) format |= DT_CENTER;
    if (type == SS_RIGHT) format |= DT_RIGHT;
    if ((style & SS_NOPREFIX) != 0) format |= DT_NOPREFIX;
    const DWORD ellipsis = style & SS_ELLIPSISMASK;
    if (ellipsis == SS_PATHELLIPSIS) return format | DT_PATH_ELLIPSIS | DT_SINGLELINE | DT_VCENTER;
    if (ellipsis != 0) return format | DT_END_ELLIPSIS | DT_SINGLELINE | DT_VCENTER;
    if ((style & SS_CENTERIMAGE) != 0) return format | DT_SINGLELINE | DT_VCENTER;
    return type == SS_LEFTNOWORDWRAP ? format : format | DT_WORDBREAK;
}

void CLabel::Create(HWND parent, const std::string& text, LabelKind kind, DWORD style, int id, const Look& look) {
    Resolve(kind, look);
    Make(parent, "STATIC", text, style, id, LabelFont(kind, look.fonts));
}

void CLabel::Adopt(HWND control, LabelKind kind, const Look& look) {
    Resolve(kind, look);
    Attach(control, LabelFont(kind, look.fonts));
}

void CLabel::Resolve(LabelKind kind, const Look& look) {
    m_colour = LabelColour(kind, look.colours);
    m_disabledColour = MixColours(look.colours.quietText, look.colours.page, kDisabledShare);
}

void CLabel::SetColour(COLORREF colour) {
    if (colour == m_colour) return;
    m_colour = colour;
    Repaint();
}

SIZE CLabel::Measure(int width) const {
    return MeasureText(Font(), Text(), width);
}

void CLabel::OnPaint(HDC dc, const RECT& client) {
    DrawLabel(dc, Font(), client, Text(), IsEnabled() ? m_colour : m_disabledColour,
              LabelFormat(Style()) | PrefixFormat());
}

void CLabel::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::StaticText;
    CControl::TellAccessible(thing);
    if ((Style() & SS_NOPREFIX) != 0) thing.name = Text();
}

}  // namespace brennvar
