#include <gtest/gtest.h>

#include <string>

#include "unit/image/ImageSamples.h"

namespace brennvar {
namespace {

using namespace std::string_literals;
using test::PixelsOf;
using test::PngChunk;
using test::StoredPng;
using Pixels = std::vector<std::uint32_t>;

TEST(PngDecoderTest, DecodesACompressedPalette) {
    const auto bitmap = DecodeImage(test::FromHex(test::kPalettePng));
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 3);
    EXPECT_EQ(bitmap->height, 2);
    EXPECT_EQ(bitmap->pixels, (Pixels{0xFFFF0000, 0x80008000, 0, 0, 0, 0xFF0000FF}));
}

TEST(PngDecoderTest, DecodesEveryColourTypePremultiplied) {
    struct Row {
        std::string_view what;
        std::uint32_t width;
        std::string depthTypeInterlace, row, extra;
        Pixels expected;
    };
    const Row rows[] = {
        {"grey 1", 3, "\1\0\0"s, "\xA0"s, "", {0xFFFFFFFF, 0xFF000000, 0xFFFFFFFF}},
        {"grey 16", 1, "\x10\0\0"s, "\x80\x80"s, "", {0xFF808080}},
        {"grey 8, 0x12 transparent", 2, "\x8\0\0"s, "\x12\x13"s, PngChunk("tRNS", "\0\x12"s), {0, 0xFF131313}},
        {"colours 16", 1, "\x10\2\0"s, "\x11\x11\x22\x22\x33\x33"s, "", {0xFF112233}},
        // Both are alike in their upper bytes; only the first is the transparent one.
        {"one of two",
         2,
         "\x10\2\0"s,
         "\0\1\0\1\0\1\0\2\0\1\0\1"s,
         PngChunk("tRNS", "\0\1\0\1\0\1"s),
         {0, 0xFF000000}},
        {"palette 4", 2, "\4\3\0"s, "\x01"s, PngChunk("PLTE", "\1\2\3\4\5\6"s), {0xFF010203, 0xFF040506}},
        {"grey with alpha 8", 2, "\x8\4\0"s, "\xFF\x80\xFF\0"s, "", {0x80808080, 0}},
        {"colours with alpha 8", 2, "\x8\6\0"s, "\xFF\x80\0\x80\1\2\3\xFF"s, "", {0x80804000, 0xFF010203}},
        {"gamma is not looked at", 1, "\x8\0\0"s, "\x80"s, PngChunk("gAMA", "\0\1\x86\xA0"s), {0xFF808080}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PixelsOf(StoredPng(row.width, 1, row.depthTypeInterlace, "\0"s + row.row, row.extra)),
                  row.expected)
            << row.what;
    }
}

TEST(PngDecoderTest, PutsInterlacedPassesInOrder) {
    // 3 x 3, grey, 8 bits. Adam7 has, of so small an image, the passes 1 (0,0), 4 (2,0), 5 (0,2) (2,2), 6 (1,0)
    // (1,2) and 7 (the row y = 1), each row with its filter byte.
    const std::string rows = "\0\1"s + "\0\3"s + "\0\7\x9"s + "\0\2\0\x8"s + "\0\4\5\6"s;
    const auto grey = [](std::uint32_t value) { return 0xFF000000 | value * 0x010101; };
    EXPECT_EQ(PixelsOf(StoredPng(3, 3, "\x8\0\1"s, rows)),
              (Pixels{grey(1), grey(2), grey(3), grey(4), grey(5), grey(6), grey(7), grey(8), grey(9)}));
}

TEST(PngDecoderTest, RefusesDamage) {
    const auto good = StoredPng(2, 2, "\x8\0\0"s, "\0\1\2\0\3\4"s);
    ASSERT_TRUE(DecodeImage(good));
    for (std::size_t at = 0; at < good.size(); ++at) {  // signature, lengths, checksums: every bit counts
        for (int bit = 0; bit < 8; ++bit) {
            auto damaged = good;
            damaged[at] ^= static_cast<std::byte>(1 << bit);
            ASSERT_FALSE(DecodeImage(damaged)) << "byte " << at << ", bit " << bit;
        }
    }
    EXPECT_FALSE(DecodeImage(StoredPng(2, 3, "\x8\0\0"s, "\0\1\2\0\3\4"s)));  // a row is missing
    EXPECT_FALSE(DecodeImage(StoredPng(2, 1, "\x8\0\0"s, "\x9\1\2"s)));       // an unknown filter
    EXPECT_FALSE(DecodeImage(StoredPng(2, 1, "\3\0\0"s, "\0\1"s)));           // an unknown depth
    EXPECT_FALSE(DecodeImage(StoredPng(2, 1, "\x8\3\0"s, "\0\1\2"s)));        // no palette
}

}  // namespace
}  // namespace brennvar
