#include "ui/KeptPicture_win.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/FlagWhile.h"
#include "ui/Control_win.h"
#include "ui/Dialog_win.h"
#include "ui/FocusOnce_win.h"
#include "ui/Paint_win.h"
#include "ui/PicturePart_win.h"
#include "ui/WindowPainter_win.h"
#include "ui/Window_win.h"

namespace brennvar {
namespace {

// False: the window is none of ours, or does not know.
bool AppendPartsOf(HWND window, PictureParts& parts) {
    if (const CControl* const control = CControl::Of(window)) return control->TellParts(parts);
    if (const CWindow* const own = CWindow::Of(window)) return own->TellParts(parts);
    const CDialog* const dialog = CDialog::Of(window);
    return dialog && dialog->TellParts(parts);
}

void AddTo(const UniqueRegion& region, const RECT& place) {
    const UniqueRegion more(::CreateRectRgnIndirect(&place));
    ::CombineRgn(region.Get(), region.Get(), more.Get(), RGN_OR);
}

}  // namespace

class KeptPicture::Collector {
public:
    explicit Collector(const WindowTree& tree) : m_tree(tree), m_outermost(tree.Nodes().front().window) {
        Visit(0);
    }
    [[nodiscard]] std::vector<Part> Take() { return std::move(m_all); }

private:
    void Visit(std::size_t node) {
        const HWND window = m_tree.Nodes()[node].window;
        RECT client{};
        RECT whole{};
        ::GetClientRect(window, &client);
        ::MapWindowPoints(window, m_outermost, reinterpret_cast<POINT*>(&client), 2);
        ::GetWindowRect(window, &whole);
        ::MapWindowPoints(nullptr, m_outermost, reinterpret_cast<POINT*>(&whole), 2);
        m_ofOne.clear();
        // A frame tells nothing of itself. That of the outermost window is not in the picture.
        const bool hasFrame = window != m_outermost && !::EqualRect(&whole, &client);
        if (hasFrame || !AppendPartsOf(window, m_ofOne)) {
            m_all.push_back({window, 0, hasFrame ? whole : client, 0});
        } else {
            for (std::size_t index = 0; index < m_ofOne.size(); ++index) {
                RECT place = m_ofOne[index].place;
                ::OffsetRect(&place, client.left, client.top);
                m_all.push_back({window, index, place, m_ofOne[index].look});
            }
        }
        m_tree.ForEachShownIn(node, [this](std::size_t child) { Visit(child); });
    }

    const WindowTree& m_tree;
    HWND m_outermost;
    PictureParts m_ofOne;
    std::vector<Part> m_all;
};

bool KeptPicture::IsSame(const Part& one, const Part& other) {
    return one.look != 0 && one.look == other.look && ::EqualRect(&one.place, &other.place);
}

UniqueRegion KeptPicture::Stale(const std::vector<Part>& before, const std::vector<Part>& now, const RECT& client) {
    UniqueRegion stale(::CreateRectRgn(0, 0, 0, 0));
    if (!stale) return stale;
    std::map<std::pair<HWND, std::size_t>, std::size_t> places;
    for (std::size_t place = 0; place < before.size(); ++place) {
        places.emplace(std::pair(before[place].window, before[place].index), place);
    }
    std::size_t last = 0;
    bool isReordered = before.empty();
    for (const Part& part : now) {
        const auto found = places.find({part.window, part.index});
        if (found == places.end()) {
            AddTo(stale, part.place);
            continue;
        }
        const Part& old = before[found->second];
        if (!IsSame(part, old)) {
            AddTo(stale, part.place);
            AddTo(stale, old.place);
        }
        // What lies above what may have changed wherever two of them meet.
        isReordered = isReordered || found->second < last;
        last = found->second;
        places.erase(found);
    }
    for (const auto& gone : places) AddTo(stale, before[gone.second].place);
    if (isReordered) AddTo(stale, client);
    return stale;
}

void KeptPicture::FollowWindows(HWND window) {
    const bool isSame = !m_tree.Nodes().empty() && m_tree.Nodes().front().window == window;
    if (isSame && m_windowChanges == WindowChanges()) return;
    m_windowChanges = WindowChanges();
    m_tree = WindowTree(window);
    // Another window may have the number of one that has gone.
    std::erase_if(m_sheets, [this](const std::unique_ptr<Sheet>& sheet) {
        return sheet->page &&
               std::ranges::find(m_tree.Nodes(), sheet->page, &WindowTree::Node::window) == m_tree.Nodes().end();
    });
}

HWND KeptPicture::ShownPage() const {
    HWND page = nullptr;
    m_tree.ForEachShownIn(0, [&](std::size_t child) {
        const HWND window = m_tree.Nodes()[child].window;
        if (CDialog::Of(window)) page = window;
    });
    return page;
}

KeptPicture::Sheet& KeptPicture::SheetOf(HWND page) {
    auto place = std::ranges::find(m_sheets, page, [](const std::unique_ptr<Sheet>& sheet) { return sheet->page; });
    if (place == m_sheets.end() && m_sheets.size() < kMostPages) {
        place = m_sheets.insert(place, std::make_unique<Sheet>());
    } else if (place == m_sheets.end()) {
        --place;
    }
    std::rotate(m_sheets.begin(), place, place + 1);
    Sheet& sheet = *m_sheets.front();
    // What another page has left is painted over: none of its windows is shown.
    sheet.page = page;
    return sheet;
}

HDC KeptPicture::BringUpToDate(HWND window, HDC like) {
    if (m_isPainting) return nullptr;
    const FlagWhile painting(m_isPainting);
    const FocusOnce focus;
    RECT client{};
    ::GetClientRect(window, &client);
    const SIZE size{client.right, client.bottom};
    FollowWindows(window);
    Sheet& sheet = SheetOf(ShownPage());
    CKeptBitmap& bitmap = sheet.bitmap;
    if (!bitmap.Dc() || bitmap.Size().cx != size.cx || bitmap.Size().cy != size.cy) {
        sheet.parts.clear();
        if (!bitmap.Make(like, size)) return nullptr;
    }
    // Before anything is painted: what changes meanwhile is painted the next time.
    std::vector<Part> now = Collector(m_tree).Take();
    const UniqueRegion stale = Stale(sheet.parts, now, client);
    sheet.parts.clear();
    RECT box{};
    if (!stale) return nullptr;
    if (::GetRgnBox(stale.Get(), &box) != NULLREGION) {
        const SavedDc saved(bitmap.Dc());
        ::SelectClipRgn(bitmap.Dc(), stale.Get());
        PaintWindows(m_tree, bitmap.Dc(), client);
    }
    if (bitmap.Dc()) sheet.parts = std::move(now);
    return bitmap.Dc();
}

}  // namespace brennvar
