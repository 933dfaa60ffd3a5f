#include "ScreenPicture.h"

#include <algorithm>
#include <limits>
#include <map>

#include "config/Contrast.h"

namespace brennvar::test {

ScreenPicture::ScreenPicture(HWND window) : m_pixels(PixelsAt(window)) {
    ::GetWindowRect(window, &m_place);
}

bool ScreenPicture::Shows(const RECT& place) const {
    RECT common{};
    return ::IntersectRect(&common, &m_place, &place) && ::EqualRect(&common, &place) &&
           m_pixels.size() ==
               static_cast<std::size_t>((m_place.right - m_place.left) * (m_place.bottom - m_place.top));
}

std::uint32_t ScreenPicture::At(LONG x, LONG y) const {
    const LONG width = m_place.right - m_place.left;
    const std::uint32_t pixel = m_pixels[static_cast<std::size_t>((y - m_place.top) * width + (x - m_place.left))];
    return (pixel & 0xFF) << 16 | (pixel & 0xFF00) | (pixel >> 16 & 0xFF);
}

ScreenPicture::Inks ScreenPicture::InksIn(const RECT& place) const {
    std::map<std::uint32_t, int> counts;
    for (LONG y = place.top; y < place.bottom; ++y) {
        for (LONG x = place.left; x < place.right; ++x) ++counts[At(x, y)];
    }
    const auto ground = std::max_element(
        counts.begin(), counts.end(), [](const auto& one, const auto& other) { return one.second < other.second; });
    Inks inks;
    for (const auto& [colour, count] : counts) {
        const double contrast = Contrast(colour, ground->first);
        inks.strongest = std::max(inks.strongest, contrast);
        if (contrast >= kFrameContrast) inks.strong += count;
    }
    return inks;
}

bool ScreenPicture::IsMarkedSince(const ScreenPicture& before, const RECT& place) const {
    RECT seen{};
    if (!::IntersectRect(&seen, &place, &m_place) || !Shows(seen) || !before.Shows(seen)) return false;
    constexpr LONG kMost = std::numeric_limits<LONG>::max();
    RECT changed{kMost, kMost, 0, 0};
    LONG strong = 0;
    for (LONG y = seen.top; y < seen.bottom; ++y) {
        for (LONG x = seen.left; x < seen.right; ++x) {
            const std::uint32_t was = before.At(x, y), is = At(x, y);
            if (was == is) continue;
            changed = {std::min(changed.left, x), std::min(changed.top, y), std::max(changed.right, x + 1),
                       std::max(changed.bottom, y + 1)};
            if (Contrast(was, is) >= kFrameContrast) ++strong;
        }
    }
    return strong > 0 && strong >= changed.right - changed.left + changed.bottom - changed.top - 4;
}

}  // namespace brennvar::test
