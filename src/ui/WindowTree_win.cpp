#include "ui/WindowTree_win.h"

namespace brennvar {
namespace {

thread_local std::uint64_t s_changes = 0;

}  // namespace

WindowTree::WindowTree(HWND outermost) {
    Add(outermost);
}

void WindowTree::Add(HWND window) {
    const std::size_t node = m_nodes.size();
    m_nodes.push_back({window, 0});
    const HWND first = ::GetWindow(window, GW_CHILD);
    for (HWND child = first ? ::GetWindow(first, GW_HWNDLAST) : nullptr; child;
         child = ::GetWindow(child, GW_HWNDPREV)) {
        Add(child);
    }
    m_nodes[node].end = m_nodes.size();
}

std::uint64_t WindowChanges() {
    return s_changes;
}

void NoteWindowChange() {
    ++s_changes;
}

void NoteMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_PARENTNOTIFY) {
        if (LOWORD(wParam) == WM_CREATE || LOWORD(wParam) == WM_DESTROY) NoteWindowChange();
    } else if (message == WM_WINDOWPOSCHANGED) {
        const bool isOtherOrder = (reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_NOZORDER) == 0;
        if (isOtherOrder && (::GetWindowLongPtrA(window, GWL_STYLE) & WS_CHILD) != 0) NoteWindowChange();
    }
}

}  // namespace brennvar
