#include "ui/KeptPicture_win.h"

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

UniqueRegion KeptPicture::Stale(const std::vector<Part>& now, const RECT& client) const {
    UniqueRegion stale(::CreateRectRgn(0, 0, 0, 0));
    if (!stale) return stale;
    std::map<std::pair<HWND, std::size_t>, std::size_t> places;
    for (std::size_t place = 0; place < m_parts.size(); ++place) {
        places.emplace(std::pair(m_parts[place].window, m_parts[place].index), place);
    }
    std::size_t last = 0;
    bool isReordered = m_parts.empty();
    for (const Part& part : now) {
        const auto before = places.find({part.window, part.index});
        if (before == places.end()) {
            AddTo(stale, part.place);
            continue;
        }
        const Part& old = m_parts[before->second];
        if (!IsSame(part, old)) {
            AddTo(stale, part.place);
            AddTo(stale, old.place);
        }
        // What lies above what may have changed wherever two of them meet.
        isReordered = isReordered || before->second < last;
        last = before->second;
        places.erase(before);
    }
    for (const auto& gone : places) AddTo(stale, m_parts[gone.second].place);
    if (isReordered) AddTo(stale, client);
    return stale;
}

void KeptPicture::FollowWindows(HWND window) {
    const bool isSame = !m_tree.Nodes().empty() && m_tree.Nodes().front().window == window;
    if (isSame && m_windowChanges == WindowChanges()) return;
    m_windowChanges = WindowChanges();
    m_tree = WindowTree(window);
}

HDC KeptPicture::BringUpToDate(HWND window, HDC like) {
    if (m_isPainting) return nullptr;
    const FlagWhile painting(m_isPainting);
    const FocusOnce focus;
    RECT client{};
    ::GetClientRect(window, &client);
    const SIZE size{client.right, client.bottom};
    if (!m_bitmap.Dc() || m_bitmap.Size().cx != size.cx || m_bitmap.Size().cy != size.cy) {
        m_parts.clear();
        if (!m_bitmap.Make(like, size)) return nullptr;
    }
    FollowWindows(window);
    // Before anything is painted: what changes meanwhile is painted the next time.
    std::vector<Part> now = Collector(m_tree).Take();
    const UniqueRegion stale = Stale(now, client);
    m_parts.clear();
    RECT box{};
    if (!stale) return nullptr;
    if (::GetRgnBox(stale.Get(), &box) != NULLREGION) {
        const SavedDc saved(m_bitmap.Dc());
        ::SelectClipRgn(m_bitmap.Dc(), stale.Get());
        PaintWindows(m_tree, m_bitmap.Dc(), client);
    }
    if (m_bitmap.Dc()) m_parts = std::move(now);
    return m_bitmap.Dc();
}

}  // namespace brennvar
