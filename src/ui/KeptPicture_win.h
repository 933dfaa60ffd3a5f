// The picture of a window and everything in it, kept while the window is seen. When all of it has to be painted,
// only what has changed since is painted into the picture, which is then copied: painting a window anew that
// another one has covered costs no more than the copy.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ui/KeptBitmap_win.h"
#include "ui/WindowTree_win.h"

namespace brennvar {

class KeptPicture {
public:
    // A DC with the client area of the window, as WM_ERASEBKGND and WM_PRINTCLIENT of all its visible windows paint
    // it now; in client coordinates. Windows that tell their parts (TellParts) are painted only where these are not
    // what they were, all others each time. Null without memory, and for a window too large to be kept: nothing
    // was painted then. The DC is not to be painted on.
    [[nodiscard]] HDC BringUpToDate(HWND window, HDC like);
    // The window and all that is in it, as they were then.
    [[nodiscard]] const WindowTree& Windows() const { return m_tree; }

private:
    // In the coordinates of the outermost window.
    struct Part {
        HWND window;
        std::size_t index;  // in its window
        RECT place;
        std::uint64_t look;
    };
    class Collector;
    [[nodiscard]] static bool IsSame(const Part& one, const Part& other);
    // What of the picture is not what it should be. Null without memory.
    [[nodiscard]] UniqueRegion Stale(const std::vector<Part>& now, const RECT& client) const;

    // Looks at the windows anew where they are not the same ones.
    void FollowWindows(HWND window);

    CKeptBitmap m_bitmap;
    WindowTree m_tree;
    std::uint64_t m_windowChanges = 0;
    std::vector<Part> m_parts;  // as they are painted, the lowest window first
    bool m_isPainting = false;
};

}  // namespace brennvar
