// A decoded image as Windows blends it: 32 bits a pixel, colours premultiplied by alpha, top row first.
#pragma once

#include <cstdint>
#include <vector>

namespace brennvar {

struct Bitmap {
    int width = 0;
    int height = 0;
    // width * height pixels, 0xAARRGGBB; in memory blue, green, red, alpha.
    std::vector<std::uint32_t> pixels;
};

// A pixel from its straight (not premultiplied) parts, each 0 to 255.
[[nodiscard]] constexpr std::uint32_t Premultiplied(std::uint32_t red, std::uint32_t green, std::uint32_t blue,
                                                    std::uint32_t alpha) {
    const auto part = [alpha](std::uint32_t value) { return (value * alpha + 127) / 255; };
    return alpha << 24 | part(red) << 16 | part(green) << 8 | part(blue);
}

}  // namespace brennvar
