// A window and all windows in it, as they are painted: what contains others before them, the lowest of those side
// by side first. Asking Windows for it takes some calls for each window, so whoever keeps a tree asks only when
// WindowChanges has moved on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar {

class WindowTree {
public:
    struct Node {
        HWND window;
        std::size_t end;  // behind the last window in it
    };

    WindowTree() = default;
    explicit WindowTree(HWND outermost);
    // The outermost window is the first. Hidden ones are among them.
    [[nodiscard]] const std::vector<Node>& Nodes() const { return m_nodes; }
    // Calls visit with the place of each node directly in the given one whose window is shown.
    template <class Visit>
    void ForEachShownIn(std::size_t node, const Visit& visit) const {
        for (std::size_t child = node + 1; child < m_nodes[node].end; child = m_nodes[child].end) {
            if ((::GetWindowLongPtrA(m_nodes[child].window, GWL_STYLE) & WS_VISIBLE) != 0) visit(child);
        }
    }

private:
    void Add(HWND window);

    std::vector<Node> m_nodes;
};

// Another number whenever windows of this thread have come, gone or changed their order. What has a place in no
// window of ours, such as the inside of a combo box, is told by its parent (WM_PARENTNOTIFY).
[[nodiscard]] std::uint64_t WindowChanges();
// A window of ours has come or gone.
void NoteWindowChange();
// For the windows of ours: each message, before it is handled.
void NoteMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace brennvar
