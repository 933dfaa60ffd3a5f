#include "controls/GroupBox_win.h"

#include <algorithm>

#include "ui/ChildControls_win.h"
#include "ui/Paint_win.h"

namespace brennvar {
namespace {

constexpr int kTitleLeft = 12;
constexpr int kTitleGap = 4;  // between title and line
constexpr int kInset = 8;     // between frame and controls
constexpr int kDisabledShare = 90;

}  // namespace

void CGroupBox::Create(HWND parent, const std::string& text, int id, const Look& look) {
    Make(parent, "BUTTON", text, BS_GROUPBOX | WS_GROUP, id, look.fonts.Bold());
    SetUp(look);
}

void CGroupBox::Adopt(HWND control, const Look& look) {
    Attach(control, look.fonts.Bold());
    SetUp(look);
}

void CGroupBox::SetUp(const Look& look) {
    m_colours = look.colours;
    m_titleHeight = MeasureText(look.fonts.Bold(), "Ag", 0).cy;
}

RECT CGroupBox::Inside() const {
    RECT place{};
    ::GetWindowRect(Window(), &place);
    ::MapWindowPoints(nullptr, ::GetParent(Window()), reinterpret_cast<POINT*>(&place), 2);
    const LONG top = place.top + m_titleHeight;
    place = Inset(place, Scale(kInset));
    place.top = std::min(top + Scale(kInset), place.bottom);
    return place;
}

std::optional<LRESULT> CGroupBox::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND: return TRUE;
        case WM_PAINT: OnPaintMessage(); return 0;
        case WM_PRINTCLIENT:
            if ((lParam & PRF_ERASEBKGND) != 0) PaintParentGround(Window(), reinterpret_cast<HDC>(wParam));
            OnPaint(reinterpret_cast<HDC>(wParam), ClientRect());
            return 0;
        case WM_SETTEXT:
        case WM_ENABLE:
        case WM_UPDATEUISTATE:
        case BM_SETSTYLE: return CallSilently(message, wParam, lParam);
        default: return std::nullopt;
    }
}

void CGroupBox::OnPaintMessage() {
    PAINTSTRUCT paint{};
    const HDC dc = ::BeginPaint(Window(), &paint);
    ExcludeNeighbours(dc);
    {
        const CBufferedDc buffer(dc, paint.rcPaint);
        PaintParentGround(Window(), buffer.Dc());
        OnPaint(buffer.Dc(), ClientRect());
    }
    ::EndPaint(Window(), &paint);
}

void CGroupBox::ExcludeNeighbours(HDC dc) const {
    RECT own{};
    ::GetWindowRect(Window(), &own);
    for (HWND other = ::GetWindow(Window(), GW_HWNDFIRST); other; other = ::GetWindow(other, GW_HWNDNEXT)) {
        if (other == Window() || !::IsWindowVisible(other)) continue;
        RECT place{};
        ::GetWindowRect(other, &place);
        RECT common{};
        if (!::IntersectRect(&common, &own, &place) || ::EqualRect(&common, &own))
            continue;  // a box around this one
        ::MapWindowPoints(nullptr, Window(), reinterpret_cast<POINT*>(&common), 2);
        ::ExcludeClipRect(dc, common.left, common.top, common.right, common.bottom);
    }
}

void CGroupBox::OnPaint(HDC dc, const RECT& client) {
    const std::string title = Text();
    RECT text{client.left + Scale(kTitleLeft), client.top, client.right - Scale(kTitleLeft),
              client.top + m_titleHeight};
    const int saved = ::SaveDC(dc);
    if (!title.empty()) {
        const CSelect select(dc, Font());
        RECT measured = text;
        ::DrawTextA(dc, title.c_str(), static_cast<int>(title.size()), &measured, DT_SINGLELINE | DT_CALCRECT);
        const LONG right = std::min(measured.right, text.right);
        ::ExcludeClipRect(dc, text.left - Scale(kTitleGap), text.top, right + Scale(kTitleGap), text.bottom);
    }
    PaintLines(dc, client);
    ::RestoreDC(dc, saved);
    const COLORREF colour =
        IsEnabled() ? m_colours.text : MixColours(m_colours.quietText, m_colours.page, kDisabledShare);
    DrawLabel(dc, Font(), text, title, colour, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | PrefixFormat());
}

void CGroupBox::PaintLines(HDC dc, const RECT& client) const {
    RECT frame = client;
    frame.top += m_titleHeight / 2;
    DrawFrame(dc, frame, m_colours.frame1);
    DrawFrame(dc, Inset(frame, 1), m_colours.frame2);
}

void CGroupBox::TellAccessible(AccessibleThing& thing) const {
    CControl::TellAccessible(thing);
    thing.role = AccessibleRole::Grouping;
}

}  // namespace brennvar
