#include "prompts/QuestionTips_win.h"

#include <windowsx.h>

#include <algorithm>
#include <utility>

#include "ui/Paint_win.h"

namespace brennvar {

void QuestionTips::Begin(HWND window, const Look& look) {
    m_window = window;
    m_tip = std::make_unique<CTextTip>(look);
}

void QuestionTips::AddBelow(const RECT& place, const std::string& text) {
    RECT below = place;
    ::OffsetRect(&below, 0, HeightOf(place));
    m_tips.push_back({place, below, text});
}

void QuestionTips::OnMessage(UINT message, LPARAM lParam) {
    if (message == WM_MOUSELEAVE && m_over == m_window) Follow(kNone, nullptr);
    if (message == WM_MOUSEMOVE) FindTip({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}, m_window);
}

void QuestionTips::OnLoopMessage(const MSG& message) {
    if (message.hwnd == m_window) return;  // which gets it itself
    if (message.message == WM_MOUSELEAVE && m_over == message.hwnd) Follow(kNone, nullptr);
    if (message.message != WM_MOUSEMOVE) return;
    POINT mouse{GET_X_LPARAM(message.lParam), GET_Y_LPARAM(message.lParam)};
    ::MapWindowPoints(message.hwnd, m_window, &mouse, 1);
    FindTip(mouse, message.hwnd);
}

void QuestionTips::FindTip(POINT mouse, HWND over) {
    const auto found =
        std::find_if(m_tips.begin(), m_tips.end(), [&](const Tip& tip) { return ::PtInRect(&tip.place, mouse); });
    Follow(found == m_tips.end() ? kNone : static_cast<int>(found - m_tips.begin()), over);
}

void QuestionTips::Follow(int index, HWND over) {
    m_over = over;
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
    leaving.hwndTrack = over;
    ::TrackMouseEvent(&leaving);
}

void QuestionTips::OnTimer(UINT_PTR id) {
    if (id != kTimer) return;
    ::KillTimer(m_window, kTimer);
    if (m_below == kNone) return;
    const Tip& tip = m_tips[static_cast<std::size_t>(m_below)];
    RECT place = tip.shownAt;
    ::MapWindowPoints(m_window, nullptr, reinterpret_cast<POINT*>(&place), 2);
    m_tip->Show(m_window, place, tip.text);
}

}  // namespace brennvar
