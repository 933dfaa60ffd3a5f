// The picture of a window and everything in it, kept while the window is seen. When all of it has to be painted,
// only what has changed since is painted into the picture, which is then copied: painting a window anew that
// another one has covered costs no more than the copy. Of a window with pages, dialogs of which one is shown at a
// time, there is a picture for each of those that were shown last: going back to one paints what has changed on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "ui/KeptBitmap_win.h"
#include "ui/WindowTree_win.h"

namespace brennvar {

class KeptPicture {
public:
    // Pages that have a picture, and at 1000 x 680 pixels 2.7 MB each.
    static constexpr std::size_t kMostPages = 3;

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
    struct Sheet {
        HWND page = nullptr;  // null: none is shown
        CKeptBitmap bitmap;
        std::vector<Part> parts;  // as they are painted, the lowest window first
    };
    [[nodiscard]] static bool IsSame(const Part& one, const Part& other);
    // What of the picture is not what it should be. Null without memory.
    [[nodiscard]] static UniqueRegion Stale(const std::vector<Part>& before, const std::vector<Part>& now,
                                            const RECT& client);

    // Looks at the windows anew where they are not the same ones.
    void FollowWindows(HWND window);
    [[nodiscard]] HWND ShownPage() const;
    // That of the page, or the one that was used longest ago.
    [[nodiscard]] Sheet& SheetOf(HWND page);

    std::vector<std::unique_ptr<Sheet>> m_sheets;  // the one used last is the first
    WindowTree m_tree;
    std::uint64_t m_windowChanges = 0;
    bool m_isPainting = false;
};

}  // namespace brennvar
