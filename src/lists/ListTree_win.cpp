#include "lists/ListTree_win.h"

#include <chrono>
#include <utility>

namespace brennvar {
namespace {

constexpr std::chrono::seconds kBalloonDuration{8};

bool IsHeld(int key) {
    return ::GetKeyState(key) < 0;
}

}  // namespace

void CListTree::ShowBalloon(int row, const BalloonTexts& texts, HICON icon) {
    RECT place = CellRect(row, 0);
    if (::IsRectEmpty(&place)) return;
    ::MapWindowPoints(Window(), nullptr, reinterpret_cast<POINT*>(&place), 2);
    UniqueIcon copy(icon ? ::CopyIcon(icon) : nullptr);
    (void)m_balloon.Show(texts, place,
                         {.timeout = kBalloonDuration, .icon = copy.Get(), .keyboard = Window(), .isBelow = true});
    m_balloonIcon = std::move(copy);
}

void CListTree::OnDestroy() {
    HideBalloon();
    CTree::OnDestroy();
}

void CListTree::OnSize(int width, int height) {
    HideBalloon();
    CTree::OnSize(width, height);
}

void CListTree::OnLeftDown(POINT point, UINT keys) {
    HideBalloon();
    CTree::OnLeftDown(point, keys);
}

void CListTree::OnDoubleClick(POINT point, UINT keys) {
    HideBalloon();
    CTree::OnDoubleClick(point, keys);
}

void CListTree::OnWheel(int delta, bool isHorizontal) {
    HideBalloon();
    CTree::OnWheel(delta, isHorizontal);
}

bool CListTree::OnKeyDown(UINT key) {
    HideBalloon();
    // With Ctrl, Space selects as in every list; with Shift nothing is to happen by accident.
    if (key == VK_SPACE && !IsHeld(VK_CONTROL) && !IsHeld(VK_SHIFT) && keyPressed(ListKey::Space)) return true;
    if (key == VK_DELETE && keyPressed(ListKey::Delete)) return true;
    // Where rows cannot be moved, Ctrl moves the focus alone.
    if (IsHeld(VK_CONTROL) && !IsHeld(VK_SHIFT)) {
        if (key == VK_UP && keyPressed(ListKey::ControlUp)) return true;
        if (key == VK_DOWN && keyPressed(ListKey::ControlDown)) return true;
    }
    return CTree::OnKeyDown(key);
}

std::optional<LRESULT> CListTree::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_VSCROLL:
        case WM_HSCROLL:
        case WM_CONTEXTMENU:
        case WM_KILLFOCUS: HideBalloon(); break;
        default: break;
    }
    return CTree::OnMessage(message, wParam, lParam);
}

}  // namespace brennvar
