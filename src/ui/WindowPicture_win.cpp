#include "ui/WindowPicture_win.h"

#include "ui/Dialog_win.h"
#include "ui/KeptPicture_win.h"
#include "ui/Paint_win.h"
#include "ui/WindowPainter_win.h"

namespace brennvar {
namespace {

bool HasOwnScrollBar(HWND window) {
    return (::GetWindowLongPtrA(window, GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL)) != 0;
}

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

void PaintScrollBars(const WindowTree& tree) {
    for (std::size_t node = 1; node < tree.Nodes().size(); ++node) {
        const HWND window = tree.Nodes()[node].window;
        // Windows paints its own scroll bars on the screen only, in some versions.
        if (HasOwnScrollBar(window) && ::IsWindowVisible(window)) ::SendMessageA(window, WM_NCPAINT, 1, 0);
    }
}

bool IsSeen(HWND window) {
    return ::IsWindowVisible(window) && !::IsIconic(::GetAncestor(window, GA_ROOT));
}

void Show(const WindowTree& tree, HDC screen, const RECT& part, HDC picture) {
    const HWND window = tree.Nodes().front().window;
    const CaretHidden caret;
    ::BitBlt(screen, part.left, part.top, WidthOf(part), HeightOf(part), picture, part.left, part.top, SRCCOPY);
    PaintScrollBars(tree);
    ::RedrawWindow(window, &part, nullptr, RDW_VALIDATE | RDW_NOERASE | RDW_NOFRAME | RDW_ALLCHILDREN);
}

// False when the window keeps no picture.
bool ShowKept(HWND window, HDC screen, const RECT& part) {
    CDialog* const dialog = CDialog::Of(window);
    KeptPicture* const kept = dialog ? dialog->PictureToKeep() : nullptr;
    const HDC picture = kept ? kept->BringUpToDate(window, screen) : nullptr;
    if (picture) Show(kept->Windows(), screen, part, picture);
    return picture != nullptr;
}

// False without memory for the bitmap: nothing was done.
bool ShowFromBitmap(HWND window, HDC screen, const RECT& part) {
    if (ShowKept(window, screen, part)) return true;
    const UniqueMemoryDc memory(::CreateCompatibleDC(screen));
    const UniqueBitmap bitmap(::CreateCompatibleBitmap(screen, WidthOf(part), HeightOf(part)));
    if (!memory || !bitmap) return false;
    const CSelect select(memory.Get(), bitmap.Get());
    ::SetViewportOrgEx(memory.Get(), -part.left, -part.top, nullptr);
    const WindowTree tree(window);
    PaintWindows(tree, memory.Get(), part);
    Show(tree, screen, part, memory.Get());
    return true;
}

bool ShowFromBitmap(HWND window, const RECT& part) {
    // Not the DC that painting has: it leaves out the windows in this one.
    const HDC screen = ::GetDCEx(window, nullptr, DCX_CACHE | DCX_CLIPSIBLINGS);
    const bool isShown = screen && ShowFromBitmap(window, screen, part);
    if (screen) ::ReleaseDC(window, screen);
    return isShown;
}

}  // namespace

void ShowAsOnePicture(HWND window, const RECT& part) {
    if (!IsSeen(window) || ::IsRectEmpty(&part) || ShowFromBitmap(window, part)) return;
    // Later: painting at once would not end where no window can paint, for want of a DC.
    ::RedrawWindow(window, &part, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
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
