// Images from files that anyone may have written: PNG, JPEG, GIF (its first frame), ICO (its best entry) and WBMP,
// told apart by how they begin and never by their names.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "image/Bitmap.h"

namespace brennvar {

// Limits of what is decoded, so that a small file cannot make us take gigabytes: pixels a side, and 64 MB in all.
inline constexpr int kLongestSide = 16384;
inline constexpr int kMostPixels = 1 << 24;

// Nothing for an unknown format and for a damaged, cut or too large image: an image comes whole or not at all.
// Time and memory are bounded by the limits above and the size of the file. Any thread.
[[nodiscard]] std::optional<Bitmap> DecodeImage(std::span<const std::byte> file);

}  // namespace brennvar
