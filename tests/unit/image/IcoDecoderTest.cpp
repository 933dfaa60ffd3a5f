#include <gtest/gtest.h>

#include <string>

#include "unit/image/ImageSamples.h"

namespace brennvar {
namespace {

using namespace std::string_literals;
using test::LittleEndian;
using test::PixelsOf;
using Pixels = std::vector<std::uint32_t>;

std::string Hex(std::string_view digits) {
    return test::TextFromHex(digits);
}

// The head of a BMP entry: 40 bytes; its height counts colours and mask.
std::string BmpHead(std::uint32_t width, std::uint32_t height, std::uint32_t bits, std::uint32_t colourCount = 0,
                    std::uint32_t compression = 0) {
    return LittleEndian(40, 4) + LittleEndian(width, 4) + LittleEndian(height * 2, 4) + LittleEndian(1, 2) +
           LittleEndian(bits, 2) + LittleEndian(compression, 4) + std::string(12, '\0') +
           LittleEndian(colourCount, 4) + std::string(4, '\0');
}

// A file of these images. The directory says nothing of sizes and depths, as those of many programs.
std::vector<std::byte> Ico(const std::vector<std::string>& images, std::uint32_t shift = 0) {
    std::string file = "\0\0\1\0"s + LittleEndian(static_cast<std::uint32_t>(images.size()), 2);
    auto offset = static_cast<std::uint32_t>(6 + 16 * images.size()) + shift;
    for (const std::string& image : images) {
        const auto size = static_cast<std::uint32_t>(image.size());
        file += std::string(8, '\0') + LittleEndian(size, 4) + LittleEndian(offset, 4);
        offset += size;
    }
    for (const std::string& image : images) file += image;
    const auto bytes = std::as_bytes(std::span(file));
    return {bytes.begin(), bytes.end()};
}

TEST(IcoDecoderTest, DecodesEveryDepthWithItsMask) {
    // 2 x 2: red, green / blue, masked out. The lower row comes first; rows end at four bytes.
    const Pixels expected = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0};
    const std::string mask = "40000000 00000000";
    const std::string palette = "ff000000 ffffff00 00ff0000 0000ff00";
    struct Row {
        std::uint32_t bits, colourCount;
        std::string hex;
    };
    const Row rows[] = {
        {4, 4, palette + "01000000 32000000" + mask},
        {8, 4, palette + "00010000 03020000" + mask},
        {24, 0, "ff0000 ffffff 0000 0000ff 00ff00 0000" + mask},
        {32, 0, "ff000000 ffffff00 0000ff00 00ff0000" + mask},  // no alpha anywhere
        {32, 0, "ff0000ff ffffff00 0000ffff 00ff00ff" + mask},
        {32, 0, "ff0000ff ffffff00 0000ffff 00ff00ff"},  // alpha, and so no mask
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PixelsOf(Ico({BmpHead(2, 2, row.bits, row.colourCount) + Hex(row.hex)})), expected)
            << row.bits << ": " << row.hex;
    }
    EXPECT_EQ(PixelsOf(Ico({BmpHead(3, 1, 1) + Hex("332211 00 665544 00 40000000 20000000")})),
              (Pixels{0xFF112233, 0xFF445566, 0}));
    EXPECT_EQ(PixelsOf(Ico({BmpHead(1, 1, 32) + Hex("0080ff80")})), (Pixels{0x80804000}));  // premultiplied
}

TEST(IcoDecoderTest, TakesTheLargestThenTheDeepestImage) {
    const std::string small = BmpHead(1, 1, 32) + Hex("010101ff 00000000");
    const std::string shallow = BmpHead(2, 1, 24) + Hex("020202 020202 0000 00000000");
    const std::string deep = BmpHead(2, 1, 32) + Hex("030303ff 030303ff 00000000");
    const std::string png = Hex(test::kPalettePng);  // 3 x 2, 2 bits a pixel
    EXPECT_EQ(PixelsOf(Ico({deep, shallow, small})), (Pixels{0xFF030303, 0xFF030303}));
    EXPECT_EQ(PixelsOf(Ico({shallow, deep})), (Pixels{0xFF030303, 0xFF030303}));
    EXPECT_EQ(PixelsOf(Ico({deep, png})), (Pixels{0xFFFF0000, 0x80008000, 0, 0, 0, 0xFF0000FF}));
}

TEST(IcoDecoderTest, RefusesDamage) {
    const std::string pixel = Hex("010101ff 00000000");
    const std::string good = BmpHead(1, 1, 32) + pixel;
    ASSERT_TRUE(DecodeImage(Ico({good})));
    EXPECT_FALSE(DecodeImage(Ico({})));
    EXPECT_FALSE(DecodeImage(Ico({good}, 1)));                // the last byte would lie outside
    EXPECT_FALSE(DecodeImage(Ico({good}, 0xFFFFFFFF - 21)));  // the offset is the largest number
    EXPECT_FALSE(DecodeImage(Ico({good, good}, 1)));          // the second one outside
    for (const std::string& head : {
             BmpHead(1, 1, 16), BmpHead(1, 1, 32, 0, 3),  // a depth and a compression that icons do not have
             BmpHead(0, 1, 32), BmpHead(1, 0, 32), BmpHead(0xFFFFFFFF, 1, 32),
             BmpHead(1, 0xFFFFFFFF, 32),  // the top row first
         }) {
        EXPECT_FALSE(DecodeImage(Ico({head + pixel}))) << testing::PrintToString(head);
    }
    EXPECT_FALSE(DecodeImage(Ico({BmpHead(1, 1, 8, 1) + Hex("00000000 01000000 00000000")})));  // colour 1 of one
    EXPECT_FALSE(DecodeImage(Ico({BmpHead(1, 1, 24) + Hex("01010100")})));                      // no mask
    auto cut = good;
    cut[0] = 12;  // a header of another kind
    EXPECT_FALSE(DecodeImage(Ico({cut})));
}

}  // namespace
}  // namespace brennvar
