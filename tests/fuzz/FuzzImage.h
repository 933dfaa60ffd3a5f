// What holds of every image that a decoder gives, whatever its input was.
#pragma once

#include <optional>

#include "FuzzInput.h"
#include "image/DecodeImage.h"

namespace brennvar::fuzz {

inline std::span<const std::byte> BytesOfInput(const std::uint8_t* data, std::size_t size) {
    return std::as_bytes(std::span(data, size));
}

inline void RequireProperImage(const std::optional<Bitmap>& bitmap) {
    if (!bitmap) return;
    Require(bitmap->width > 0 && bitmap->width <= kLongestSide);
    Require(bitmap->height > 0 && bitmap->height <= kLongestSide);
    const auto count = static_cast<std::size_t>(bitmap->width) * static_cast<std::size_t>(bitmap->height);
    Require(count <= kMostPixels && bitmap->pixels.size() == count);
    // Premultiplied: no colour is above alpha. A look at the first ones keeps the engine fast.
    for (std::size_t i = 0; i < std::min<std::size_t>(count, 4096); ++i) {
        const std::uint32_t pixel = bitmap->pixels[i];
        for (const int shift : {0, 8, 16}) Require((pixel >> shift & 0xFF) <= pixel >> 24);
    }
}

}  // namespace brennvar::fuzz
