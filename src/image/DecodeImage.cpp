#include "image/DecodeImage.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "image/Decoders.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;

bool StartsWith(std::span<const std::byte> file, std::string_view signature) {
    const auto wanted = std::as_bytes(std::span(signature));
    return file.size() >= wanted.size() && std::equal(wanted.begin(), wanted.end(), file.begin());
}

std::optional<Bitmap> DecodeBySignature(std::span<const std::byte> file) {
    if (IsPng(file)) return DecodePng(file);
    if (StartsWith(file, "\xFF\xD8\xFF"sv)) return DecodeJpeg(file);
    if (StartsWith(file, "GIF87a"sv) || StartsWith(file, "GIF89a"sv)) return DecodeGif(file);
    if (StartsWith(file, "\0\0\1\0"sv)) return DecodeIco(file);
    // Type 0 and the fixed header 0. As a WBMP the four bytes above would be an image of no height.
    if (StartsWith(file, "\0\0"sv)) return DecodeWbmp(file);
    return std::nullopt;
}

}  // namespace

bool IsPng(std::span<const std::byte> file) {
    return StartsWith(file, "\x89PNG\r\n\x1A\n"sv);
}

std::optional<Bitmap> MakeBitmap(std::uint32_t width, std::uint32_t height) {
    if (width == 0 || height == 0 || width > kLongestSide || height > kLongestSide) return std::nullopt;
    if (width * height > kMostPixels) return std::nullopt;
    return Bitmap{static_cast<int>(width), static_cast<int>(height),
                  std::vector<std::uint32_t>(std::size_t{width} * height)};
}

std::optional<Bitmap> DecodeImage(std::span<const std::byte> file) {
    try {
        return DecodeBySignature(file);
    } catch (const std::bad_alloc&) {
        return std::nullopt;  // too large for this machine at this moment
    }
}

}  // namespace brennvar
