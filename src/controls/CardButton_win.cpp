#include "controls/CardButton_win.h"

#include <functional>

#include "controls/FieldFrame_win.h"
#include "ui/FocusOnce_win.h"
#include "ui/Paint_win.h"

namespace brennvar {

void CCardButton::Create(HWND parent, const std::string& text, int id, const Look& look) {
    m_colours = look.colours;
    Make(parent, "BUTTON", text, BS_PUSHBUTTON | WS_TABSTOP, id, look.fonts.Text());
}

bool CCardButton::IsPressed() const {
    return (::SendMessageA(Window(), BM_GETSTATE, 0, 0) & BST_PUSHED) != 0;
}

bool CCardButton::TellParts(PictureParts& parts) const {
    const std::string state = {IsHot() ? 'h' : '-', IsPressed() ? 'p' : '-',
                               FocusOnce::Window() == Window() && ShowsFocus() ? 'f' : '-'};
    parts.push_back({ClientRect(), std::hash<std::string>()(state + Text()) | 1});
    return true;
}

void CCardButton::OnPaint(HDC dc, const RECT& client) {
    constexpr int kFocusInset = 2;
    if (IsHot() || IsPressed()) DrawFrame(dc, client, m_colours.accent);
    if (IsPressed()) DrawFrame(dc, Inset(client, 1), m_colours.accent);
    if (ShowsFocus()) DrawFrame(dc, Inset(client, Scale(kFocusInset)), FocusColour(m_colours));
}

std::optional<LRESULT> CCardButton::OnMessage(UINT message, WPARAM, LPARAM) {
    if (message != WM_SETCURSOR) return std::nullopt;
    ::SetCursor(::LoadCursorA(nullptr, IDC_HAND));
    return TRUE;
}

}  // namespace brennvar
