#include "controls/SelectableText_win.h"

#include <algorithm>

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"
#include "ui/WideText_win.h"

namespace brennvar {
namespace {

constexpr WPARAM kControlA = 'A' - '@';
// Of a pill, at 96 pixels per inch.
constexpr int kPillMargin = 6;  // between its sides and the text
constexpr int kPillRim = 1;     // above and below the text
constexpr int kPillCorner = 8;  // as in lists

}  // namespace

void CSelectableText::Create(HWND parent, int id, const Look& look) {
    m_textColour = look.colours.text;
    m_list = look.colours.list;
    m_font = look.fonts.Text();
    // Windows paints it, and would take its bytes for those of the system's language.
    MakeWide(parent, L"EDIT", ES_MULTILINE | ES_READONLY, id, look.fonts.Text());
    m_lineHeight = MeasureText(look.fonts.Text(), "Ag", 0).cy;
    CallWindows(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
}

bool CSelectableText::Show(const std::string& text) {
    if (text == m_shown) return false;
    m_shown = text;
    DWORD begin = 0;
    DWORD end = 0;
    CallWindows(EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    ::SetWindowTextW(Window(), Widen(text, m_font).c_str());
    CallWindows(EM_SETSEL, begin, static_cast<LPARAM>(end));
    return true;
}

void CSelectableText::SetColours(COLORREF text, std::optional<COLORREF> pill) {
    if (text == m_textColour && pill == m_pill) return;
    m_textColour = text;
    m_pill = pill;
    ::SetWindowPos(Window(), nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    ::InvalidateRect(Window(), nullptr, TRUE);
}

SIZE CSelectableText::PillMargin() const {
    return m_pill ? SIZE{Scale(kPillMargin), Scale(kPillRim)} : SIZE{};
}

int CSelectableText::HeightAt(int width) {
    RECT place{};
    ::GetWindowRect(Window(), &place);
    const int rim = 2 * PillMargin().cy;
    if (WidthOf(place) != width) {
        ::SetWindowPos(Window(), nullptr, 0, 0, width, m_lineHeight + rim,
                       SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    // Windows knows best where it breaks the lines.
    return static_cast<int>(CallWindows(EM_GETLINECOUNT, 0, 0)) * m_lineHeight + rim;
}

int CSelectableText::FullWidth() const {
    // A pixel more: a line that fills its room is broken.
    return static_cast<int>(MeasureText(Font(), m_shown, 0).cx) + 2 * PillMargin().cx + 1;
}

LRESULT CSelectableText::OnCalculateSize(WPARAM wParam, RECT& place) {
    const LRESULT result = CallWindows(WM_NCCALCSIZE, wParam, reinterpret_cast<LPARAM>(&place));
    const SIZE margin = PillMargin();
    ::InflateRect(&place, -margin.cx, -margin.cy);
    return result;
}

// Around the client area, which is all of one colour; the DC's origin is the window's corner.
void CSelectableText::PaintPill(HDC dc) {
    RECT place{};
    ::GetWindowRect(Window(), &place);
    RECT inside = ClientRect();
    ::MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&inside), 2);
    ::OffsetRect(&inside, -place.left, -place.top);
    ::OffsetRect(&place, -place.left, -place.top);
    const SavedDc saved(dc);  // the inside may be painted with it next
    ::ExcludeClipRect(dc, inside.left, inside.top, inside.right, inside.bottom);
    FillSolid(dc, place, m_list);
    {
        const CSelect brush(dc, ::GetStockObject(DC_BRUSH));
        const CSelect pen(dc, ::GetStockObject(DC_PEN));
        ::SetDCBrushColor(dc, *m_pill);
        ::SetDCPenColor(dc, *m_pill);
        ::RoundRect(dc, place.left, place.top, place.right, place.bottom, Scale(kPillCorner), Scale(kPillCorner));
    }
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
        case WM_NCCALCSIZE: return OnCalculateSize(wParam, *reinterpret_cast<RECT*>(lParam));
        case WM_NCPAINT:
            if (m_pill) {
                const HDC dc = ::GetWindowDC(Window());
                PaintPill(dc);
                ::ReleaseDC(Window(), dc);
            }
            return 0;
        case WM_PRINT:
            if (m_pill && (lParam & PRF_NONCLIENT) != 0) PaintPill(reinterpret_cast<HDC>(wParam));
            return CallWindows(message, wParam, lParam & ~static_cast<LPARAM>(PRF_NONCLIENT));
        case WM_NCHITTEST: {
            const LRESULT hit = CallWindows(message, wParam, lParam);
            return hit == HTNOWHERE || hit == HTBORDER ? HTCLIENT : hit;
        }
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
    const COLORREF ground = m_pill.value_or(m_list);
    ::SetTextColor(dc, m_textColour);
    ::SetBkColor(dc, ground);
    ::SetDCBrushColor(dc, ground);
    return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
}

void CSelectableText::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::Text;
    thing.value = m_shown;
    thing.Set(STATE_SYSTEM_READONLY, true);
    NameByLabel(Window(), thing);
}

}  // namespace brennvar
