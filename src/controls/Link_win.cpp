#include "controls/Link_win.h"

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kPadding = 3;             // left and right of the text, for the focus frame
constexpr int kDisabledTextShare = 90;  // towards the page: quiet, and still legible

}  // namespace

void CLink::Adopt(HWND control, const Look& look) {
    m_colours = look.colours;
    m_font = Underlined(look.fonts.Text());
    Attach(control, m_font.Get());
}

void CLink::AdoptPath(HWND control, const std::string& path, const Look& look) {
    m_path = path;
    m_plainFont = look.fonts.Text();
    // A button's text has mnemonics, which a path must not bring.
    std::string name;
    for (const char c : path) name.append(c == '&' ? 2 : 1, c);
    ::SetWindowTextA(control, name.c_str());
    Adopt(control, look);
}

int CLink::Padding() {
    return Scale(kPadding);
}

int CLink::Width() const {
    return MeasureText(Font(), Text(), 0).cx + 2 * Scale(kPadding);
}

void CLink::PaintPath(HDC dc, const RECT& client) {
    RECT place = client;
    ::InflateRect(&place, -Scale(kPadding), 0);
    DrawLabel(dc, IsHot() ? m_font.Get() : m_plainFont, place, m_path, m_colours.text,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_PATH_ELLIPSIS);
    if (ShowsFocus()) DrawFrame(dc, client, m_colours.quietText);
}

void CLink::OnPaint(HDC dc, const RECT& client) {
    if (!m_path.empty()) return PaintPath(dc, client);
    COLORREF colour = IsHot() ? m_colours.text : m_colours.quietText;
    if (!IsEnabled()) colour = MixColours(m_colours.quietText, m_colours.page, kDisabledTextShare);
    DrawLabel(dc, Font(), client, Text(), colour, DT_CENTER | DT_VCENTER | DT_SINGLELINE | PrefixFormat());
    if (ShowsFocus()) DrawFrame(dc, client, m_colours.quietText);
}

std::optional<LRESULT> CLink::OnMessage(UINT message, WPARAM, LPARAM) {
    if (message != WM_SETCURSOR || !IsEnabled()) return std::nullopt;
    ::SetCursor(::LoadCursorA(nullptr, IDC_HAND));
    return TRUE;
}

void CLink::TellAccessible(AccessibleThing& thing) const {
    CControl::TellAccessible(thing);
    thing.role = AccessibleRole::Link;
    thing.action = AccessibleAction::Press;
}

}  // namespace brennvar
