#include "controls/Edit_win.h"

#include <algorithm>

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr WPARAM kControlA = 'A' - '@';
constexpr WPARAM kBullet = 0x95;  // in each of the code pages; a star is too faint

}  // namespace

void CEdit::Create(HWND parent, const std::string& text, DWORD style, int id, const Look& look) {
    Make(parent, "EDIT", text, style | WS_TABSTOP, id, look.fonts.Text());
    SetUp(look);
}

void CEdit::Adopt(HWND control, const Look& look) {
    Attach(control, look.fonts.Text());
    SetUp(look);
}

void CEdit::SetUp(const Look& look) {
    m_colours = look.colours;
    m_lineHeight = MeasureText(look.fonts.Text(), "Ag", 0).cy;
    // Windows' margins follow the font; ours are part of the frame.
    ::SendMessageA(Window(), EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    if ((Style() & ES_PASSWORD) != 0) ::SendMessageA(Window(), EM_SETPASSWORDCHAR, kBullet, 0);
    RemoveBorder(Window());  // and makes Windows ask for the frame's size
}

void CEdit::SetCue(const std::string& cue) {
    m_cue = cue;
    Repaint();
}

bool CEdit::ShowsCue() const {
    return !m_cue.empty() && !HasLines() && IsEmpty();
}

FieldState CEdit::GroundState() const {
    if (!IsEnabled()) return FieldState::Disabled;
    return (Style() & ES_READONLY) != 0 ? FieldState::ReadOnly : FieldState::Rest;
}

std::optional<LRESULT> CEdit::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_NCCALCSIZE: return OnCalculateSize(wParam, *reinterpret_cast<RECT*>(lParam));
        case WM_NCPAINT: return OnPaintFrame(wParam, lParam);
        case WM_PRINT:
            if ((lParam & PRF_NONCLIENT) == 0) return std::nullopt;
            PaintFrame(reinterpret_cast<HDC>(wParam));
            return CallWindows(message, wParam, lParam & ~static_cast<LPARAM>(PRF_NONCLIENT));
        case WM_NCHITTEST: {
            // The room around a line is part of the field.
            const LRESULT hit = CallWindows(message, wParam, lParam);
            return hit == HTNOWHERE || hit == HTBORDER ? HTCLIENT : hit;
        }
        case WM_ERASEBKGND: return ShowsCue() ? std::optional<LRESULT>(TRUE) : std::nullopt;
        case WM_PAINT:
            if (!ShowsCue()) return std::nullopt;
            PaintCue(CBufferedPaint(Window()).Dc());
            return 0;
        case WM_PRINTCLIENT:
            if (!ShowsCue()) return std::nullopt;
            PaintCue(reinterpret_cast<HDC>(wParam));
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_ENABLE:
        case EM_SETREADONLY: {
            const HWND window = Window();
            const LRESULT result = CallWindows(message, wParam, lParam);
            if (::IsWindow(window)) {
                ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
            }
            return result;
        }
        case WM_CHAR:
            // Ctrl+A: not every version of Windows selects all on it.
            if (wParam == kControlA) {
                CallWindows(EM_SETSEL, 0, -1);
                return 0;
            }
            return OnTextMessage(message, wParam, lParam);
        case WM_SETTEXT:
        case WM_KEYDOWN:
        case WM_CUT:
        case WM_PASTE:
        case WM_CLEAR:
        case WM_UNDO:
        case EM_UNDO:
        case EM_REPLACESEL: return OnTextMessage(message, wParam, lParam);
        default: return std::nullopt;
    }
}

LRESULT CEdit::OnCalculateSize(WPARAM wParam, RECT& place) {
    place = Inset(place, kFieldFrame);
    const LRESULT result = CallWindows(WM_NCCALCSIZE, wParam, reinterpret_cast<LPARAM>(&place));
    const LONG padding = FieldPadding();
    const DWORD style = Style();
    place.left += padding + RoomBefore();
    // A scroll bar stands at the client area's edge.
    if ((style & WS_VSCROLL) == 0) place.right = std::max(place.left, place.right - padding - RoomBehind());
    if (HasLines()) {
        place.top += kFieldFrame;
        if ((style & WS_HSCROLL) == 0) place.bottom = std::max(place.top, place.bottom - kFieldFrame);
    } else if (m_lineHeight > 0 && m_lineHeight < HeightOf(place)) {
        place.top += (HeightOf(place) - m_lineHeight) / 2;
        place.bottom = place.top + m_lineHeight;
    }
    return result;
}

LRESULT CEdit::OnPaintFrame(WPARAM wParam, LPARAM lParam) {
    if ((Style() & (WS_VSCROLL | WS_HSCROLL)) != 0) CallWindows(WM_NCPAINT, wParam, lParam);
    const HDC dc = ::GetWindowDC(Window());
    PaintFrame(dc);
    ::ReleaseDC(Window(), dc);
    return 0;
}

void CEdit::PaintFrame(HDC dc) const {
    const DWORD style = Style();
    RECT place{};
    ::GetWindowRect(Window(), &place);
    RECT inside = ClientRect();
    ::MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&inside), 2);
    ::OffsetRect(&inside, -place.left, -place.top);
    ::OffsetRect(&place, -place.left, -place.top);
    if ((style & WS_VSCROLL) != 0) inside.right = place.right - kFieldFrame;
    if ((style & WS_HSCROLL) != 0) inside.bottom = place.bottom - kFieldFrame;
    const SavedDc saved(dc);  // the inside may be painted with it next
    ::ExcludeClipRect(dc, inside.left, inside.top, inside.right, inside.bottom);
    FillSolid(dc, Inset(place, kFieldFrame), FieldGround(m_colours, GroundState()));
    DrawFieldFrame(dc, place, m_colours, HasFocus() && IsEnabled() ? FieldState::Focused : GroundState());
    PaintRooms(dc, Inset(place, kFieldFrame));
}

LRESULT CEdit::OnTextMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = Window();
    const bool showed = ShowsCue();
    const bool hasCue = !m_cue.empty();
    const LRESULT result = CallWindows(message, wParam, lParam);
    // Windows paints only what it knows to have changed. The parent may have ended the field.
    if (hasCue && ::IsWindow(window) && showed != (::GetWindowTextLengthA(window) == 0)) {
        ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME);
    }
    return result;
}

void CEdit::PaintCue(HDC dc) const {
    const RECT client = ClientRect();
    FillSolid(dc, client, FieldGround(m_colours, GroundState()));
    DrawLabel(dc, Font(), client, m_cue, m_colours.quietText,
              DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

std::optional<LRESULT> CEdit::OnReflected(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_CTLCOLOREDIT && message != WM_CTLCOLORSTATIC) return std::nullopt;
    return AnswerFieldColours(reinterpret_cast<HDC>(wParam), m_colours, GroundState());
}

void CEdit::TellAccessible(AccessibleThing& thing) const {
    const bool isSecret = (Style() & ES_PASSWORD) != 0;
    thing.role = AccessibleRole::Text;
    if (!isSecret) thing.value = Text();
    thing.Set(STATE_SYSTEM_PROTECTED, isSecret);
    thing.Set(STATE_SYSTEM_READONLY, (Style() & ES_READONLY) != 0);
    NameByLabel(Window(), thing);
    // Of a field without a label the cue is all that says what belongs there.
    (thing.name.empty() ? thing.name : thing.description) = m_cue;
}

}  // namespace brennvar
