#include "image/DecodeImage.h"

#include <gtest/gtest.h>

#include <string>

#include "unit/image/ImageSamples.h"

namespace brennvar {
namespace {

using namespace std::string_literals;
using test::FromHex;

// One file of each format, without anything after the image.
std::vector<std::vector<std::byte>> Samples() {
    return {
        FromHex(test::kPalettePng),
        FromHex(test::kRgbJpeg),
        FromHex(std::string(test::kGreyJpegHead) + std::string(test::kGreyJpegScans)),
        FromHex(test::kGif),
        // 1 x 1, 32 bits.
        FromHex("0000 0100 0100 01010000 0100 2000 30000000 16000000 28000000 01000000 02000000 0100 2000"
                "00000000 00000000 00000000 00000000 00000000 00000000 0080ff80 00000000"),
        FromHex(test::kWbmp),
    };
}

TEST(DecodeImageTest, KnowsEachFormatByHowItBegins) {
    for (const auto& file : Samples()) EXPECT_TRUE(DecodeImage(file)) << static_cast<int>(file[0]);
    EXPECT_FALSE(DecodeImage({}));
    EXPECT_FALSE(DecodeImage(FromHex("424d 3a000000 0000 0000 36000000")));  // BMP is none of them
}

TEST(DecodeImageTest, RefusesFilesThatAreCutAnywhere) {
    for (const auto& file : Samples()) {
        for (std::size_t size = 0; size < file.size(); ++size) {
            // A copy of exactly that size, so that the sanitizer sees every step over the end.
            const std::vector<std::byte> cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(size));
            ASSERT_FALSE(DecodeImage(cut)) << static_cast<int>(file[0]) << " at " << size;
        }
    }
}

TEST(DecodeImageTest, LimitsSidesAndPixels) {
    const auto png = [](std::uint32_t width, std::uint32_t height) {
        return test::StoredPng(width, height, "\1\0\0"s,
                               std::string(std::size_t{(width + 7) / 8 + 1} * height, '\0'));
    };
    // Two bytes a number: 0x8180 00 is 16384, 0x8180 01 is 16385, 0xA000 is 4096.
    const auto wbmp = [](std::string_view hex, std::size_t size) {
        auto file = FromHex(hex);
        file.resize(file.size() + size);
        return file;
    };
    EXPECT_TRUE(DecodeImage(png(1, 16384)));
    EXPECT_FALSE(DecodeImage(png(1, 16385)));
    EXPECT_TRUE(DecodeImage(wbmp("0000 818000 01", 2048)));
    EXPECT_FALSE(DecodeImage(wbmp("0000 818001 01", 2049)));
    EXPECT_TRUE(DecodeImage(wbmp("0000 a000 a000", std::size_t{512} * 4096)));   // 2^24 pixels
    EXPECT_FALSE(DecodeImage(wbmp("0000 a000 a001", std::size_t{512} * 4097)));  // one row more
    // 65535 x 65535 as GIF, and as a progressive JPEG, in a hundred bytes.
    EXPECT_FALSE(
        DecodeImage(FromHex("474946383761 ffff ffff 91 00 00 ff0000 00ff00 0000ff ffffff"
                            "2c 0000 0000 0100 0100 00 02 02 4401 00")));
    std::string jpeg = std::string(test::kGreyJpegHead) + std::string(test::kGreyJpegScans);
    jpeg.replace(jpeg.find("0800100008"), 10, "08ffffffff");
    EXPECT_FALSE(DecodeImage(FromHex(jpeg)));
    EXPECT_FALSE(DecodeImage(test::StoredPng(16384, 1024, "\x8\6\0"s, "\0"s)));  // no such image in so few bytes
}

TEST(DecodeImageTest, PaintsOnesOfWbmpWhiteAndRefusesOtherTypesThanZero) {
    const auto bitmap = DecodeImage(FromHex(test::kWbmp));
    ASSERT_TRUE(bitmap && bitmap->width == 10 && bitmap->height == 2);
    std::vector<std::uint32_t> expected(20, 0xFF000000);
    for (const std::size_t white : {0, 9, 10, 19}) expected[white] = 0xFFFFFFFF;
    EXPECT_EQ(bitmap->pixels, expected);
    for (const std::string_view hex : {
             "0000 00 01 80",                  // no width
             "0000 01 00 80",                  // no height
             "0000 808080808080808080 01 80",  // a width that does not end
             "0000 9080808001 01 80",          // a width of more than 32 bits
             "0001 01 01 80",                  // another type or header
         }) {
        EXPECT_FALSE(DecodeImage(FromHex(hex))) << hex;
    }
}

}  // namespace
}  // namespace brennvar
