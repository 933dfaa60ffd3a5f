#include "ui/WindowPicture_win.h"

#include "ui/Paint_win.h"

namespace brennvar {
namespace {

bool HasOwnScrollBar(HWND window) {
    return (::GetWindowLongPtrA(window, GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL)) != 0;
}

// Windows into a bitmap, whose DC has the coordinates of the outermost one's client area.
class Painter {
public:
    Painter(HWND outermost, HDC dc) : m_outermost(outermost), m_dc(dc) {}

    // seen: what may be painted on.
    void Paint(HWND window, const RECT& seen) const {
        RECT client{};
        ::GetClientRect(window, &client);
        ::MapWindowPoints(window, m_outermost, reinterpret_cast<POINT*>(&client), 2);
        if (window != m_outermost) PaintFrame(window, client, seen);
        RECT inside{};
        if (!::IntersectRect(&inside, &client, &seen)) return;
        {
            const SavedDc saved(m_dc);
            MoveInto(client, inside);
            ::SendMessageA(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(m_dc), 0);
            ::SendMessageA(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(m_dc), PRF_CLIENT);
        }
        // As they lie: the lowest first.
        const HWND first = ::GetWindow(window, GW_CHILD);
        for (HWND child = first ? ::GetWindow(first, GW_HWNDLAST) : nullptr; child;
             child = ::GetWindow(child, GW_HWNDPREV)) {
            if ((::GetWindowLongPtrA(child, GWL_STYLE) & WS_VISIBLE) != 0) Paint(child, inside);
        }
    }

private:
    void PaintFrame(HWND window, const RECT& client, const RECT& seen) const {
        RECT whole{};
        ::GetWindowRect(window, &whole);
        ::MapWindowPoints(nullptr, m_outermost, reinterpret_cast<POINT*>(&whole), 2);
        RECT inside{};
        if (::EqualRect(&whole, &client) || !::IntersectRect(&inside, &whole, &seen)) return;
        const SavedDc saved(m_dc);
        MoveInto(whole, inside);
        ::SendMessageA(window, WM_PRINT, reinterpret_cast<WPARAM>(m_dc), PRF_NONCLIENT);
    }

    // The place's corner becomes the origin, and nothing is painted beside the part.
    void MoveInto(const RECT& place, const RECT& part) const {
        ::IntersectClipRect(m_dc, part.left, part.top, part.right, part.bottom);
        ::OffsetViewportOrgEx(m_dc, place.left, place.top, nullptr);
    }

    HWND m_outermost;
    HDC m_dc;
};

// A blinking text cursor turns over what it stands on, and would leave its trace in the picture.
class CaretHidden {
public:
    CaretHidden() : m_isHidden(::HideCaret(nullptr) != FALSE) {}
    CaretHidden(const CaretHidden&) = delete;
    CaretHidden& operator=(const CaretHidden&) = delete;
    ~CaretHidden() {
        if (m_isHidden) ::ShowCaret(nullptr);
    }

private:
    bool m_isHidden;
};

BOOL CALLBACK PaintScrollBars(HWND child, LPARAM) {
    // Windows paints its own scroll bars on the screen only, in some versions.
    if (::IsWindowVisible(child) && HasOwnScrollBar(child)) ::SendMessageA(child, WM_NCPAINT, 1, 0);
    return TRUE;
}

bool IsSeen(HWND window) {
    return ::IsWindowVisible(window) && !::IsIconic(::GetAncestor(window, GA_ROOT));
}

// False without memory for the bitmap: nothing was done.
bool ShowFromBitmap(HWND window, const RECT& part) {
    // Not the DC that painting has: it leaves out the windows in this one.
    const HDC screen = ::GetDCEx(window, nullptr, DCX_CACHE | DCX_CLIPSIBLINGS);
    if (!screen) return false;
    const UniqueMemoryDc memory(::CreateCompatibleDC(screen));
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(screen, WidthOf(part), HeightOf(part)));
    const bool hasBitmap = memory && bitmap;
    if (hasBitmap) {
        const CSelect select(memory.Get(), bitmap.Get());
        ::SetViewportOrgEx(memory.Get(), -part.left, -part.top, nullptr);
        Painter(window, memory.Get()).Paint(window, part);
        const CaretHidden caret;
        ::BitBlt(screen, part.left, part.top, WidthOf(part), HeightOf(part), memory.Get(), part.left, part.top,
                 SRCCOPY);
        ::EnumChildWindows(window, &PaintScrollBars, 0);
        ::RedrawWindow(window, &part, nullptr, RDW_VALIDATE | RDW_NOERASE | RDW_NOFRAME | RDW_ALLCHILDREN);
    }
    ::ReleaseDC(window, screen);
    return hasBitmap;
}

}  // namespace

void ShowAsOnePicture(HWND window, const RECT& part) {
    if (!IsSeen(window) || ::IsRectEmpty(&part) || ShowFromBitmap(window, part)) return;
    ::RedrawWindow(window, &part, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN | RDW_UPDATENOW);
}

bool PaintAsOnePicture(HWND window) {
    RECT invalid{};
    RECT client{};
    ::GetClientRect(window, &client);
    if (!::GetUpdateRect(window, &invalid, FALSE) || !::EqualRect(&invalid, &client)) return false;
    // Nothing is valid yet: to have it painted at once here would only bring the same WM_PAINT again.
    return IsSeen(window) && ShowFromBitmap(window, client);
}

}  // namespace brennvar
