#include "ui/WindowPainter_win.h"

#include "ui/Dialog_win.h"
#include "ui/Paint_win.h"
#include "ui/PicturePart_win.h"
#include "ui/Window_win.h"

namespace brennvar {
namespace {

bool TellsAll(const CDialog* dialog) {
    PictureParts parts;
    return dialog && dialog->TellParts(parts);
}

// By what CWindow promises, and of dialogs those that know what they show.
bool PaintsAll(HWND window) {
    return CWindow::Of(window) || TellsAll(CDialog::Of(window));
}

class Painter {
public:
    Painter(const WindowTree& tree, HDC dc) : m_tree(tree), m_outermost(tree.Nodes().front().window), m_dc(dc) {}

    // seen: what may be painted on.
    void Paint(std::size_t node, const RECT& seen) const {
        const HWND window = m_tree.Nodes()[node].window;
        RECT client{};
        ::GetClientRect(window, &client);
        ::MapWindowPoints(window, m_outermost, reinterpret_cast<POINT*>(&client), 2);
        if (window != m_outermost) PaintFrame(window, client, seen);
        RECT inside{};
        if (!::IntersectRect(&inside, &client, &seen) || !::RectVisible(m_dc, &inside)) return;
        {
            const SavedDc saved(m_dc);
            LeaveOutCovered(node);
            MoveInto(client, inside);
            ::SendMessageA(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(m_dc), 0);
            // A dialog that knows all it shows paints nothing but its ground.
            if (!TellsAll(CDialog::Of(window)))
                ::SendMessageA(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(m_dc), PRF_CLIENT);
        }
        m_tree.ForEachShownIn(node, [&](std::size_t child) { Paint(child, inside); });
    }

private:
    // Nobody sees the ground below a window that paints all of its own place.
    void LeaveOutCovered(std::size_t node) const {
        m_tree.ForEachShownIn(node, [this](std::size_t child) {
            const HWND window = m_tree.Nodes()[child].window;
            if (!PaintsAll(window)) return;
            RECT place{};
            ::GetClientRect(window, &place);
            ::MapWindowPoints(window, m_outermost, reinterpret_cast<POINT*>(&place), 2);
            ::ExcludeClipRect(m_dc, place.left, place.top, place.right, place.bottom);
        });
    }

    void PaintFrame(HWND window, const RECT& client, const RECT& seen) const {
        RECT whole{};
        ::GetWindowRect(window, &whole);
        ::MapWindowPoints(nullptr, m_outermost, reinterpret_cast<POINT*>(&whole), 2);
        RECT inside{};
        if (::EqualRect(&whole, &client) || !::IntersectRect(&inside, &whole, &seen)) return;
        if (!::RectVisible(m_dc, &inside)) return;
        const SavedDc saved(m_dc);
        MoveInto(whole, inside);
        ::SendMessageA(window, WM_PRINT, reinterpret_cast<WPARAM>(m_dc), PRF_NONCLIENT);
    }

    // The place's corner becomes the origin, and nothing is painted beside the part.
    void MoveInto(const RECT& place, const RECT& part) const {
        ::IntersectClipRect(m_dc, part.left, part.top, part.right, part.bottom);
        ::OffsetViewportOrgEx(m_dc, place.left, place.top, nullptr);
    }

    const WindowTree& m_tree;
    HWND m_outermost;
    HDC m_dc;
};

}  // namespace

void PaintWindows(const WindowTree& tree, HDC dc, const RECT& part) {
    Painter(tree, dc).Paint(0, part);
}

}  // namespace brennvar
