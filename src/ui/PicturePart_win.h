// What a window shows, told in parts: so a picture of it that is kept can be held against it without painting it.
#pragma once

#include <atomic>
#include <cstdint>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar {

// A part of a window, in its client coordinates. The same number means the same look, as long as place and window
// are the same; 0 means that nobody knows.
struct PicturePart {
    RECT place{};
    std::uint64_t look = 0;
};
using PictureParts = std::vector<PicturePart>;

// A number that no look of any window has had yet.
[[nodiscard]] inline std::uint64_t NextLook() {
    static std::atomic<std::uint64_t> s_last = 0;
    return ++s_last;
}

}  // namespace brennvar
