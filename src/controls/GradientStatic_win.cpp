#include "controls/GradientStatic_win.h"

#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kPadding = 8;

}  // namespace

void CGradientStatic::Create(HWND parent, const std::string& text, int id, const Look& look) {
    Resolve(look);
    Make(parent, "STATIC", text, SS_NOPREFIX, id, look.fonts.Bold());
}

void CGradientStatic::Adopt(HWND control, const Look& look) {
    Resolve(look);
    Attach(control, look.fonts.Bold());
}

void CGradientStatic::Resolve(const Look& look) {
    m_left = look.skin.GetSkinColor("GRADIENT_LEFT", 232, 237, 242);
    m_right = look.skin.GetSkinColor("GRADIENT_RIGHT", 255, 255, 255);
    m_text = look.colours.text;
}

void CGradientStatic::OnPaint(HDC dc, const RECT& client) {
    FillGradient(dc, client, m_left, m_right, false);
    RECT text = client;
    text.left += Scale(kPadding);
    text.right -= Scale(kPadding);
    DrawLabel(dc, Font(), text, Text(), m_text, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

}  // namespace brennvar
