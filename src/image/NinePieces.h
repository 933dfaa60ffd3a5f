// An image stretched in nine pieces: the corners keep their size, the edges grow along one side, the middle along
// both.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "image/StateStrip.h"

namespace brennvar {

// Widths of the edges that are not stretched, in pixels of the image.
struct ImageBorders {
    int left = 0, top = 0, right = 0, bottom = 0;
};

struct NinePiece {
    ImageRect from, to;
};

namespace nine {

// Where the three parts of one side begin and end. Two borders that have no room side by side share what there is.
[[nodiscard]] constexpr std::array<int, 4> Cut(int start, int length, int first, int last) {
    first = std::max(first, 0);
    last = std::max(last, 0);
    if (first > length - last) {  // their sum may be too large for an int
        const double whole = static_cast<double>(first) + last;
        first = static_cast<int>(length * (first / whole));
        last = length - first;
    }
    return {start, start + first, start + length - last, start + length};
}

}  // namespace nine

// The pieces row by row; those of no width or height are to be left out by the painter. Borders that are too wide
// for the image or for the place are narrowed there.
[[nodiscard]] constexpr std::array<NinePiece, 9> NinePieces(int imageWidth, int imageHeight, const ImageRect& to,
                                                            const ImageBorders& borders) {
    const auto fromX = nine::Cut(0, imageWidth, borders.left, borders.right);
    const auto fromY = nine::Cut(0, imageHeight, borders.top, borders.bottom);
    const auto toX = nine::Cut(to.left, to.width, borders.left, borders.right);
    const auto toY = nine::Cut(to.top, to.height, borders.top, borders.bottom);
    const auto rect = [](const std::array<int, 4>& xs, const std::array<int, 4>& ys, std::size_t x, std::size_t y) {
        return ImageRect{xs[x], ys[y], xs[x + 1] - xs[x], ys[y + 1] - ys[y]};
    };
    std::array<NinePiece, 9> pieces;
    for (std::size_t y = 0; y < 3; ++y) {
        for (std::size_t x = 0; x < 3; ++x) pieces[3 * y + x] = {rect(fromX, fromY, x, y), rect(toX, toY, x, y)};
    }
    return pieces;
}

}  // namespace brennvar
