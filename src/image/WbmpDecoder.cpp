// WBMP type 0: black and white, one bit a pixel, no compression.
#include "image/ByteReader.h"
#include "image/DecodeImage.h"
#include "image/Decoders.h"

namespace brennvar {
namespace {

// Seven bits a byte, highest first; bit 7 says that another byte follows. Zero, which no image is wide or high, for
// a number over the limit, and so for one that never ends.
std::uint32_t ReadNumber(ByteReader& reader) {
    constexpr int kMostBytes = 5;  // of a number of 32 bits
    std::uint32_t number = 0;
    for (int i = 0; i < kMostBytes; ++i) {
        const std::uint8_t next = reader.U8();
        number = number << 7 | (next & 0x7F);
        if (number > kLongestSide) return 0;
        if (!(next & 0x80)) return number;
    }
    return 0;
}

}  // namespace

std::optional<Bitmap> DecodeWbmp(std::span<const std::byte> file) {
    ByteReader reader(file);
    if (reader.U8() != 0 || reader.U8() != 0) return std::nullopt;  // the type and the header, without extensions
    const std::uint32_t width = ReadNumber(reader);
    const std::uint32_t height = ReadNumber(reader);
    const std::size_t rowSize = (width + 7) / 8;
    const auto bits = reader.Take(rowSize * height);
    if (!reader.IsGood()) return std::nullopt;
    std::optional<Bitmap> bitmap = MakeBitmap(width, height);
    if (!bitmap) return std::nullopt;
    auto pixel = bitmap->pixels.begin();
    for (std::uint32_t y = 0; y < height; ++y) {
        const auto row = bits.subspan(y * rowSize, rowSize);
        for (std::uint32_t x = 0; x < width; ++x, ++pixel) {
            const bool isWhite = (row[x / 8] >> (7 - x % 8) & std::byte{1}) != std::byte{0};
            *pixel = isWhite ? 0xFFFFFFFF : 0xFF000000;
        }
    }
    return bitmap;
}

}  // namespace brennvar
