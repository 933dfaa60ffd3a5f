#include "controls/ScrollPanel_win.h"

#include "ui/Control_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kRepeatTimer = 1;
constexpr UINT kRepeatPause = 40;  // ms, while an arrow or the track is held
constexpr int kWheelSteps = 3;
// At 96 pixels per inch.
constexpr int kStep = 24;        // what positions count in: a row
constexpr int kFocusMargin = 8;  // around a control that is brought into sight

}  // namespace

bool CScrollPanel::CreatePanel(HWND parent, int id) {
    const bool isMade = Create({.parent = parent,
                                .text = "",
                                .style = WS_CHILD | WS_CLIPCHILDREN,
                                .extendedStyle = WS_EX_CONTROLPARENT,
                                .place = {},
                                .id = id,
                                .className = "BrennvarScrollPanel"});
    m_drawn.SetWindow(Window());
    return isMade;
}

void CScrollPanel::OnSize(int width, int height) {
    const int wanted = m_bar.Range().position;
    int total = OnPlaceContent(width, 0);
    const bool isNeeded = total > height;
    if (isNeeded) total = OnPlaceContent(width - CScrollBar::Thickness(), 0);
    m_bar.SetPlace(isNeeded ? RECT{width - CScrollBar::Thickness(), 0, width, height} : RECT{});
    const int step = Scale(kStep);
    ScrollRange range{.total = (total + step - 1) / step, .page = height / step, .position = 0};
    range.position = isNeeded ? range.Clamp(wanted) : 0;
    m_bar.SetRange(range);
    if (range.position > 0) OnPlaceContent(width - CScrollBar::Thickness(), -range.position * step);
    Repaint();
}

void CScrollPanel::ScrollTo(int position) {
    ScrollRange range = m_bar.Range();
    position = range.Clamp(position);
    if (!m_bar.IsShown() || position == range.position) return;
    range.position = position;
    m_bar.SetRange(range);
    OnPlaceContent(m_bar.Place().left, -position * Scale(kStep));
    ::RedrawWindow(Window(), nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void CScrollPanel::ScrollToControl(HWND control) {
    // A control that the mouse has been pressed on must stay below it.
    if (!m_bar.IsShown() || ::GetKeyState(VK_LBUTTON) < 0 || !::IsChild(Window(), control)) return;
    RECT place{};
    ::GetWindowRect(control, &place);
    ::MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&place), 2);
    const int step = Scale(kStep);
    const int over = Scale(kFocusMargin) - place.top;
    const int under = place.bottom + Scale(kFocusMargin) - ClientRect().bottom;
    const int position = m_bar.Range().position;
    if (over > 0) {
        ScrollTo(position - (over + step - 1) / step);
    } else if (under > 0) {
        ScrollTo(position + (under + step - 1) / step);
    }
}

void CScrollPanel::OnPaint(HDC dc, const RECT& invalid) {
    FillSolid(dc, invalid, m_look.colours.list);
    m_drawn.Paint(dc);
    if (m_bar.IsShown()) m_bar.Paint(dc, m_pictures, m_look.colours);
}

void CScrollPanel::OnMouseMove(POINT point, UINT) {
    m_mouse = point;
    if (m_bar.Pressed() == CScrollBar::Part::Thumb) {
        ScrollTo(m_bar.Drag(point));
    } else if (m_bar.SetHot(point)) {
        Repaint(m_bar.Place());
    }
}

void CScrollPanel::OnMouseLeave() {
    if (m_bar.ClearHot()) Repaint(m_bar.Place());
}

void CScrollPanel::OnLeftDown(POINT point, UINT) {
    m_mouse = point;
    if (!m_bar.Contains(point)) return;
    const int position = m_bar.Press(point);
    ::SetCapture(Window());
    Repaint(m_bar.Place());
    ScrollTo(position);
    if (m_bar.Pressed() != CScrollBar::Part::Thumb) ::SetTimer(Window(), kRepeatTimer, kRepeatPause, nullptr);
}

void CScrollPanel::OnLeftUp(POINT, UINT) {
    if (m_bar.Pressed() != CScrollBar::Part::None) ::ReleaseCapture();
}

void CScrollPanel::OnCaptureLost() {
    ::KillTimer(Window(), kRepeatTimer);
    m_bar.Release();
    Repaint(m_bar.Place());
}

void CScrollPanel::OnTimer(UINT_PTR id) {
    if (id == kRepeatTimer && m_bar.Pressed() != CScrollBar::Part::None) ScrollTo(m_bar.Repeat(m_mouse));
}

void CScrollPanel::OnWheel(int delta, bool isHorizontal) {
    if (!isHorizontal) ScrollTo(m_bar.Range().position - m_wheel.Turn(delta, kWheelSteps));
}

std::optional<LRESULT> CScrollPanel::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND: return ::SendMessageA(::GetParent(Window()), message, wParam, lParam);
        case WM_ERASEBKGND:  // also asked for by controls, as their ground
            FillSolid(reinterpret_cast<HDC>(wParam), ClientRect(), m_look.colours.list);
            return TRUE;
        case kControlFocused:
            ScrollToControl(reinterpret_cast<HWND>(lParam));
            // Who holds the panel may have to say something about the control.
            ::PostMessageA(::GetParent(Window()), message, wParam, lParam);
            return 0;
        default: return m_drawn.Answer(message, wParam, lParam);
    }
}

}  // namespace brennvar
