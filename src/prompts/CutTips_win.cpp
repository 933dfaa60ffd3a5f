#include "prompts/CutTips_win.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace brennvar {

void CutTips::Begin(HWND window, const Look& look) {
    m_window = window;
    m_tip = std::make_unique<CTextTip>(look);
}

void CutTips::OnMessage(UINT message, LPARAM lParam) {
    if (message == WM_MOUSELEAVE) Follow(kNone);
    if (message != WM_MOUSEMOVE) return;
    const POINT mouse{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    const auto found = std::find_if(m_texts.begin(), m_texts.end(),
                                    [&](const CutText& cut) { return ::PtInRect(&cut.place, mouse); });
    Follow(found == m_texts.end() ? kNone : static_cast<int>(found - m_texts.begin()));
}

void CutTips::Follow(int index) {
    if (std::exchange(m_below, index) == index) return;
    m_tip->Hide();
    ::KillTimer(m_window, kTimer);
    if (index == kNone) return;
    UINT delay = 400;  // ms
    ::SystemParametersInfoA(SPI_GETMOUSEHOVERTIME, 0, &delay, 0);
    ::SetTimer(m_window, kTimer, delay, nullptr);
    TRACKMOUSEEVENT leaving{};
    leaving.cbSize = sizeof(leaving);
    leaving.dwFlags = TME_LEAVE;
    leaving.hwndTrack = m_window;
    ::TrackMouseEvent(&leaving);
}

void CutTips::OnTimer(UINT_PTR id) {
    if (id != kTimer) return;
    ::KillTimer(m_window, kTimer);
    if (m_below == kNone) return;
    const CutText& cut = m_texts[static_cast<std::size_t>(m_below)];
    RECT place = cut.place;
    ::MapWindowPoints(m_window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    m_tip->Show(m_window, place, cut.text);
}

}  // namespace brennvar
