#include "controls/TextTip_win.h"

#include <algorithm>

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "ui/WorkArea_win.h"

namespace brennvar {
namespace {

constexpr int kWidest = 480;  // longer texts are broken
constexpr int kMarginX = 6;
constexpr int kMarginY = 3;
constexpr UINT kFormat = DT_NOPREFIX | DT_WORDBREAK | DT_EDITCONTROL;

}  // namespace

CTextTip::CTextTip(const Look& look)
    : m_ground(look.skin.GetSkinColor("COLOR_BALLOON", 255, 255, 255)),
      m_frame(look.colours.frame1),
      m_colour(look.colours.text),
      m_font(look.fonts.Text()) {}

void CTextTip::Show(HWND owner, const RECT& textOnScreen, const std::string& text) {
    if (!Window() && !Create({.parent = owner,
                              .text = text,
                              .style = WS_POPUP,
                              .extendedStyle = WS_EX_TOPMOST | WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE,
                              .className = "BrennvarTip"})) {
        return;
    }
    m_text = text;
    ::SetWindowTextA(Window(), m_text.c_str());
    SIZE size = MeasureText(m_font, m_text, Scale(kWidest), DT_EDITCONTROL);
    size = {size.cx + 2 * Scale(kMarginX), size.cy + 2 * Scale(kMarginY)};
    const RECT work = WorkAreaNear(textOnScreen);
    // A text of hundreds of lines shows its beginning.
    size = {std::min<LONG>(size.cx, WidthOf(work)), std::min<LONG>(size.cy, HeightOf(work))};
    // Over the cut text, so that the eye does not move.
    const LONG middle = (textOnScreen.top + textOnScreen.bottom) / 2;
    const LONG left =
        std::clamp<LONG>(textOnScreen.left - Scale(kMarginX), work.left, std::max(work.left, work.right - size.cx));
    const LONG top = std::clamp<LONG>(middle - size.cy / 2, work.top, std::max(work.top, work.bottom - size.cy));
    ::SetWindowPos(Window(), HWND_TOPMOST, left, top, size.cx, size.cy, SWP_NOACTIVATE | SWP_SHOWWINDOW);
    Repaint();
}

void CTextTip::Hide() {
    if (Window()) ::ShowWindow(Window(), SW_HIDE);
}

void CTextTip::OnPaint(HDC dc, const RECT&) {
    const RECT client = ClientRect();
    FillSolid(dc, client, m_ground);
    DrawFrame(dc, client, m_frame);
    RECT box = client;
    ::InflateRect(&box, -Scale(kMarginX), -Scale(kMarginY));
    DrawLabel(dc, m_font, box, m_text, m_colour, kFormat);
}

std::optional<LRESULT> CTextTip::OnMessage(UINT message, WPARAM, LPARAM) {
    switch (message) {
        case WM_NCHITTEST: return HTTRANSPARENT;
        case WM_MOUSEACTIVATE: return MA_NOACTIVATE;
        default: return std::nullopt;
    }
}

}  // namespace brennvar
