#include "dialogs/CardLinks_win.h"

#include <algorithm>

#include "ui/Paint_win.h"

namespace brennvar {
namespace {

POINT PointOf(LPARAM lParam) {
    return {static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))};
}

POINT Cursor(HWND page) {
    POINT point{};
    ::GetCursorPos(&point);
    ::ScreenToClient(page, &point);
    return point;
}

void AskForLeave(HWND page) {
    TRACKMOUSEEVENT track{};
    track.cbSize = sizeof track;
    track.dwFlags = TME_LEAVE;
    track.hwndTrack = page;
    ::TrackMouseEvent(&track);
}

}  // namespace

void CardLinks::Paint(HDC dc, const Palette& colours) const {
    for (const Shown& card : m_cards) {
        FillSolid(dc, card.place, colours.list);
        DrawFrame(dc, card.place, card.touch == Touch::Rest ? colours.frame2 : colours.accent);
        if (card.touch == Touch::Pressed) DrawFrame(dc, Inset(card.place, 1), colours.accent);
    }
}

void CardLinks::TellParts(PictureParts& parts) const {
    for (const Shown& card : m_cards) parts.push_back({card.place, card.look});
}

CardLinks::Shown* CardLinks::LinkAt(POINT point) {
    const auto found = std::ranges::find_if(
        m_cards, [point](const Shown& card) { return card.command != 0 && ::PtInRect(&card.place, point); });
    return found == m_cards.end() ? nullptr : &*found;
}

void CardLinks::SetTouch(HWND page, const Shown* touched, Touch touch) {
    for (Shown& card : m_cards) {
        const Touch wanted = &card == touched ? touch : Touch::Rest;
        if (card.touch == wanted) continue;
        card.touch = wanted;
        card.look = NextLook();
        ::InvalidateRect(page, &card.place, TRUE);
    }
}

void CardLinks::OnMove(HWND page, POINT point) {
    if (::GetCapture() == page) return;  // it stays pressed, or nothing of ours is
    const Shown* const link = LinkAt(point);
    if (link) AskForLeave(page);
    SetTouch(page, link, Touch::Hot);
}

void CardLinks::OnRelease(HWND page, POINT point) {
    if (::GetCapture() != page) return;
    const Shown* const link = LinkAt(point);
    const bool isClicked = link && link->touch == Touch::Pressed;
    const int command = isClicked ? link->command : 0;
    ::ReleaseCapture();  // which takes the touch away
    if (isClicked) ::PostMessageA(::GetParent(page), WM_COMMAND, static_cast<WPARAM>(command), 0);
}

std::optional<LRESULT> CardLinks::OnMessage(HWND page, UINT message, LPARAM lParam) {
    switch (message) {
        case WM_MOUSEMOVE: OnMove(page, PointOf(lParam)); return std::nullopt;
        case WM_LBUTTONDOWN:
            if (const Shown* const link = LinkAt(PointOf(lParam))) {
                ::SetCapture(page);
                SetTouch(page, link, Touch::Pressed);
            }
            return std::nullopt;
        case WM_LBUTTONUP: OnRelease(page, PointOf(lParam)); return std::nullopt;
        case WM_MOUSELEAVE:
        case WM_CAPTURECHANGED: SetTouch(page, nullptr, Touch::Rest); return std::nullopt;
        case WM_SETCURSOR:
            if (LOWORD(lParam) != HTCLIENT || !LinkAt(Cursor(page))) return std::nullopt;
            ::SetCursor(::LoadCursorA(nullptr, IDC_HAND));
            return TRUE;
        default: return std::nullopt;
    }
}

}  // namespace brennvar
