#include "TabWalk.h"

#include <map>

#include "Programs.h"
#include "Typing.h"

namespace brennvar::test {
namespace {

// What comes after a key comes at once; a test that has failed need not wait for long.
constexpr std::chrono::seconds kBrief{5};
constexpr std::size_t kMostStops = 200;
constexpr int kAround = 4;  // pixels; the frame of a field may be its owner's

RECT PlaceOf(HWND window) {
    RECT place{};
    ::GetWindowRect(window, &place);
    return place;
}

// No user reads upwards without going to the right, nor back to the left in a row.
bool IsReadAfter(const RECT& next, const RECT& before) {
    const bool isAbove = next.bottom <= before.top, isBelow = next.top >= before.bottom;
    const bool isLeft = next.right <= before.left;
    return isBelow || (!isLeft && !(isAbove && next.left < before.right && next.left <= before.left));
}

std::string NumberOf(HWND control) {
    return std::to_string(::GetDlgCtrlID(control));
}

}  // namespace

TabWalk::TabWalk(HWND window) : m_window(window) {
    (void)FindVisible(window, [&](HWND control) {
        const auto style = static_cast<DWORD>(::GetWindowLongPtrA(control, GWL_STYLE));
        if ((style & WS_TABSTOP) != 0 && ::IsWindowEnabled(control)) m_wanted.insert(control);
        return false;
    });
    if (m_wanted.size() < 2) {
        // Tab has nowhere to go.
        if (const HWND only = Stop()) m_stops.push_back(only);
    } else if (const HWND first = Next()) {
        m_stops.push_back(first);
        for (HWND at = Next(); at && at != first && m_stops.size() < kMostStops; at = Next()) m_stops.push_back(at);
        SeeStops();
    }
    CheckStops();
    CheckOrder();
}

HWND TabWalk::Stop() const {
    for (HWND at = FocusOf(m_window); at && at != m_window; at = ::GetParent(at)) {
        if (m_wanted.contains(at)) return at;
    }
    return FocusOf(m_window);
}

HWND TabWalk::Next() const {
    const HWND from = Stop();
    Type({VK_TAB});
    return WaitUntil([&] { return Stop() != from && Stop() != nullptr; }, kBrief) ? Stop() : nullptr;
}

void TabWalk::SeeStops() {
    for (std::size_t i = 1; i <= m_stops.size(); ++i) {
        const HWND stop = m_stops[i % m_stops.size()];
        RECT place = PlaceOf(stop);
        ::InflateRect(&place, kAround, kAround);
        const ScreenPicture before(place);
        if (Next() != stop) {
            m_misplaced.push_back(NumberOf(stop) + " is no stop the second time");
            return;
        }
        if (!WaitUntil([&] { return ScreenPicture(place).IsMarkedSince(before, place); }, kBrief)) {
            m_unseen.push_back("nobody sees that " + NumberOf(stop) + " has the keyboard");
        }
    }
}

void TabWalk::CheckStops() {
    const std::set<HWND> stops(m_stops.begin(), m_stops.end());
    for (const HWND control : m_wanted) {
        if (!stops.contains(control)) m_misplaced.push_back(NumberOf(control) + " is no stop");
    }
    for (const HWND stop : stops) {
        if (!m_wanted.contains(stop)) m_misplaced.push_back(NumberOf(stop) + " is a stop");
    }
    if (stops.size() != m_stops.size()) m_misplaced.emplace_back("a control is a stop twice");
}

void TabWalk::CheckOrder() {
    std::map<HWND, std::vector<HWND>> windows;
    for (const HWND stop : m_stops) windows[::GetParent(stop)].push_back(stop);
    for (const auto& [parent, inside] : windows) {
        // The walk has begun anywhere, so once it goes back to the beginning.
        std::string back;
        int times = 0;
        for (std::size_t i = 0; i < inside.size(); ++i) {
            const HWND next = inside[(i + 1) % inside.size()];
            if (IsReadAfter(PlaceOf(next), PlaceOf(inside[i]))) continue;
            ++times;
            back += NumberOf(next) + " after " + NumberOf(inside[i]) + "; ";
        }
        if (times > 1) m_misplaced.push_back("not the order of reading: " + back);
    }
}

}  // namespace brennvar::test
