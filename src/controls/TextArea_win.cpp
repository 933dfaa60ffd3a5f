#include "controls/TextArea_win.h"

#include <algorithm>

#include "controls/FieldFrame_win.h"
#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr UINT_PTR kRepeatTimer = 1;
constexpr UINT kRepeatPause = 40;  // ms, while an arrow or the track is held
constexpr int kWheelSteps = 3;     // lines of a notch
constexpr int kLinesId = 1;
constexpr int kFrame = 1;
constexpr int kPadding = 6;  // at 96 pixels per inch
constexpr WPARAM kControlA = 'A' - '@';

}  // namespace

void CTextArea::Lines::Create(HWND parent, const Look& look) {
    m_colours = look.colours;
    Make(parent, "EDIT", {}, WS_TABSTOP | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL | ES_AUTOHSCROLL, kLinesId,
         look.fonts.Fixed());
    CallWindows(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
    CallWindows(EM_SETLIMITTEXT, 0, 0);
}

void CTextArea::Lines::Show(const std::string& text) {
    if (Text() == text) return;
    const int first = FirstLine();
    DWORD begin = 0;
    DWORD end = 0;
    CallWindows(EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
    SetText(text);
    CallWindows(EM_SETSEL, begin, static_cast<LPARAM>(end));
    ScrollBy(first - FirstLine());
}

int CTextArea::Lines::LineCount() {
    return static_cast<int>(CallWindows(EM_GETLINECOUNT, 0, 0));
}

int CTextArea::Lines::FirstLine() {
    return static_cast<int>(CallWindows(EM_GETFIRSTVISIBLELINE, 0, 0));
}

void CTextArea::Lines::ScrollBy(int lines) {
    if (lines != 0) CallWindows(EM_LINESCROLL, 0, lines);
}

std::optional<LRESULT> CTextArea::Lines::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND parent = ::GetParent(Window());
    switch (message) {
        case WM_GETDLGCODE:
            // A field of several lines would take Tab, Enter and Esc as well.
            return DLGC_WANTARROWS;
        case WM_MOUSEWHEEL: return ::SendMessageA(parent, message, wParam, lParam);
        case WM_CHAR:
            if (wParam != kControlA) return std::nullopt;
            CallWindows(EM_SETSEL, 0, -1);
            return 0;
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            ::InvalidateRect(parent, nullptr, FALSE);  // the frame
            return std::nullopt;
        case WM_KEYDOWN:
        case WM_MOUSEMOVE:
        case WM_TIMER:
        case WM_VSCROLL:
        case EM_SCROLL:
        case EM_LINESCROLL:
        case EM_SCROLLCARET: {
            const HWND window = Window();
            const LRESULT result = CallWindows(message, wParam, lParam);
            ::SendMessageA(parent, WM_COMMAND, MAKEWPARAM(kLinesId, EN_VSCROLL), reinterpret_cast<LPARAM>(window));
            return result;
        }
        default: return std::nullopt;
    }
}

std::optional<LRESULT> CTextArea::Lines::OnReflected(UINT message, WPARAM wParam, LPARAM) {
    if (message != WM_CTLCOLORSTATIC && message != WM_CTLCOLOREDIT) return std::nullopt;
    const auto dc = reinterpret_cast<HDC>(wParam);
    ::SetTextColor(dc, m_colours.text);
    ::SetBkColor(dc, m_colours.list);
    ::SetDCBrushColor(dc, m_colours.list);
    return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
}

bool CTextArea::CreateArea(HWND parent, int id) {
    return Create({.parent = parent,
                   .text = "",
                   .style = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                   .extendedStyle = WS_EX_CONTROLPARENT,
                   .place = {},
                   .id = id,
                   .className = "BrennvarTextArea"});
}

bool CTextArea::OnCreate() {
    m_lines.Create(Window(), m_look);
    // The letters are of one width; what is measured of one alone may have been rounded.
    constexpr int kMany = 64;
    m_letter = MeasureText(m_look.fonts.Fixed(), std::string(kMany, '0'), 0);
    m_letter.cx = (m_letter.cx + kMany - 1) / kMany;
    return m_lines.Window() != nullptr;
}

void CTextArea::Show(const std::string& text) {
    m_lines.Show(text);
    PlaceParts();
}

int CTextArea::HeightOfLines(int count) const {
    return count * m_letter.cy + 2 * (kFrame + Scale(kPadding));
}

int CTextArea::WidthOfLetters(int count) const {
    return count * m_letter.cx + 2 * (kFrame + Scale(kPadding)) + CScrollBar::Thickness();
}

void CTextArea::OnSize(int, int) {
    PlaceParts();
}

void CTextArea::PlaceParts() {
    const RECT inside = Inset(ClientRect(), kFrame);
    RECT text = Inset(inside, Scale(kPadding));
    // Whole lines only.
    const int page = std::max(1, HeightOf(text) / std::max(1, static_cast<int>(m_letter.cy)));
    RECT bar = inside;
    bar.left = bar.right - CScrollBar::Thickness();
    if (m_lines.LineCount() > page) {
        text.right = bar.left;
    } else {
        bar = {};
    }
    text.bottom = text.top + page * m_letter.cy;
    m_bar.SetPlace(bar);
    m_lines.Place(text);
    ShowRange();
    Repaint();
}

void CTextArea::ShowRange() {
    const int page = HeightOf(m_lines.ClientRect()) / std::max(1, static_cast<int>(m_letter.cy));
    if (m_bar.SetRange({.total = m_lines.LineCount(), .page = page, .position = m_lines.FirstLine()})) {
        Repaint(m_bar.Place());
    }
}

void CTextArea::ScrollTo(int line) {
    m_lines.ScrollBy(m_bar.Range().Clamp(line) - m_lines.FirstLine());
    ShowRange();
}

void CTextArea::OnPaint(HDC dc, const RECT&) {
    const RECT client = ClientRect();
    FillSolid(dc, client, m_look.colours.list);
    const bool isFocused = ::GetFocus() == m_lines.Window();
    DrawFrame(dc, client, isFocused ? FocusColour(m_look.colours) : m_look.colours.frame2);
    if (m_bar.IsShown()) m_bar.Paint(dc, m_pictures, m_look.colours);
}

void CTextArea::OnCommand(int id, int notification) {
    if (id == kLinesId && notification == EN_VSCROLL) ShowRange();
}

void CTextArea::OnMouseMove(POINT point, UINT) {
    m_mouse = point;
    if (m_bar.Pressed() == CScrollBar::Part::Thumb) {
        ScrollTo(m_bar.Drag(point));
    } else if (m_bar.SetHot(point)) {
        Repaint(m_bar.Place());
    }
}

void CTextArea::OnMouseLeave() {
    if (m_bar.ClearHot()) Repaint(m_bar.Place());
}

void CTextArea::OnLeftDown(POINT point, UINT) {
    m_mouse = point;
    if (!m_bar.Contains(point)) return;
    const int line = m_bar.Press(point);
    ::SetCapture(Window());
    Repaint(m_bar.Place());
    ScrollTo(line);
    if (m_bar.Pressed() != CScrollBar::Part::Thumb) ::SetTimer(Window(), kRepeatTimer, kRepeatPause, nullptr);
}

void CTextArea::OnLeftUp(POINT, UINT) {
    if (m_bar.Pressed() != CScrollBar::Part::None) ::ReleaseCapture();
}

void CTextArea::OnCaptureLost() {
    ::KillTimer(Window(), kRepeatTimer);
    m_bar.Release();
    Repaint(m_bar.Place());
}

void CTextArea::OnTimer(UINT_PTR id) {
    if (id == kRepeatTimer && m_bar.Pressed() != CScrollBar::Part::None) ScrollTo(m_bar.Repeat(m_mouse));
}

void CTextArea::OnWheel(int delta, bool isHorizontal) {
    if (!isHorizontal) ScrollTo(m_bar.Range().position - m_wheel.Turn(delta, kWheelSteps));
}

void CTextArea::Lines::TellAccessible(AccessibleThing& thing) const {
    thing.role = AccessibleRole::Text;
    thing.value = Text();
    thing.Set(STATE_SYSTEM_READONLY, true);
    // The label stands before the area.
    NameByLabel(::GetParent(Window()), thing);
}

}  // namespace brennvar
