// One decoder per format, for DecodeImage. Each gets a whole file and gives a whole image or nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "image/Bitmap.h"

namespace brennvar {

// A fully transparent bitmap, or nothing when the size is zero or over the limits.
[[nodiscard]] std::optional<Bitmap> MakeBitmap(std::uint32_t width, std::uint32_t height);

[[nodiscard]] bool IsPng(std::span<const std::byte> file);

[[nodiscard]] std::optional<Bitmap> DecodePng(std::span<const std::byte> file);
[[nodiscard]] std::optional<Bitmap> DecodeJpeg(std::span<const std::byte> file);
[[nodiscard]] std::optional<Bitmap> DecodeGif(std::span<const std::byte> file);
[[nodiscard]] std::optional<Bitmap> DecodeIco(std::span<const std::byte> file);
[[nodiscard]] std::optional<Bitmap> DecodeWbmp(std::span<const std::byte> file);

}  // namespace brennvar
