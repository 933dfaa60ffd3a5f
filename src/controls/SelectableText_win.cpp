#include "controls/SelectableText_win.h"

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr WPARAM kControlA = 'A' - '@';

}  // namespace

void CSelectableText::Create(HWND parent, int id, const Look& look) {
    m_text = look.colours.text;
    m_ground = look.colours.list;
    Make(parent, "EDIT", {}, ES_MULTILINE | ES_READONLY, id, look.fonts.Text());
    m_lineHeight = MeasureText(Window(), look.fonts.Text(), "Ag", 0).cy;
    SetMargin(0);
}

void CSelectableText::Show(const std::string& text) {
    if (Text() == text) return;
    DWORD begin = 0;
    DWORD end = 0;
    CallWindows(EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    SetText(text);
    CallWindows(EM_SETSEL, begin, static_cast<LPARAM>(end));
}

void CSelectableText::SetColours(COLORREF text, COLORREF ground) {
    if (text == m_text && ground == m_ground) return;
    m_text = text;
    m_ground = ground;
    ::InvalidateRect(Window(), nullptr, TRUE);
}

void CSelectableText::SetMargin(int margin) {
    m_margin = margin;
    CallWindows(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(margin, margin));
}

int CSelectableText::HeightAt(int width) {
    if (WidthOf(ClientRect()) != width) {
        ::SetWindowPos(Window(), nullptr, 0, 0, width, m_lineHeight, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // Windows knows best where it breaks the lines.
    return static_cast<int>(CallWindows(EM_GETLINECOUNT, 0, 0)) * m_lineHeight;
}

int CSelectableText::FullWidth() const {
    // A pixel more: a line that fills its room is broken.
    return static_cast<int>(MeasureText(Window(), Font(), Text(), 0).cx) + 2 * m_margin + 1;
}

bool CSelectableText::IsForParent(WPARAM key) {
    const LRESULT line = CallWindows(EM_LINEFROMCHAR, static_cast<WPARAM>(-1), 0);
    switch (key) {
        case VK_UP: return line == 0;
        case VK_DOWN: return line + 1 == CallWindows(EM_GETLINECOUNT, 0, 0);
        case VK_PRIOR:
        case VK_NEXT: return true;
        default: return false;
    }
}

std::optional<LRESULT> CSelectableText::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_GETDLGCODE:
            // A field of several lines would take Tab, Enter and Esc as well.
            return DLGC_WANTARROWS | DLGC_HASSETSEL;
        case WM_MOUSEWHEEL: return ::SendMessageA(::GetParent(Window()), message, wParam, lParam);
        case WM_KEYDOWN:
            if (::GetKeyState(VK_SHIFT) < 0 || !IsForParent(wParam)) return std::nullopt;
            return ::SendMessageA(::GetParent(Window()), message, wParam, lParam);
        case WM_CHAR:
            // Not every version of Windows selects all on Ctrl+A.
            if (wParam != kControlA) return std::nullopt;
            CallWindows(EM_SETSEL, 0, -1);
            return 0;
        default: return std::nullopt;
    }
}

std::optional<LRESULT> CSelectableText::OnReflected(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_CTLCOLORSTATIC && message != WM_CTLCOLOREDIT) return std::nullopt;
    const auto dc = reinterpret_cast<HDC>(wParam);
    ::SetTextColor(dc, m_text);
    ::SetBkColor(dc, m_ground);
    ::SetDCBrushColor(dc, m_ground);
    return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
}

}  // namespace brennvar
