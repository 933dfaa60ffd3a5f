#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <utility>

#include "unit/image/ImageSamples.h"

namespace brennvar {
namespace {

std::optional<Bitmap> Decode(const std::string& hex) {
    return DecodeImage(test::FromHex(hex));
}

// JPEG keeps colours approximately.
bool IsNear(std::uint32_t pixel, std::uint32_t expected) {
    for (int shift = 0; shift < 32; shift += 8) {
        const auto part = [shift](std::uint32_t value) { return static_cast<int>(value >> shift & 0xFF); };
        if (std::abs(part(pixel) - part(expected)) > 3) return false;
    }
    return true;
}

TEST(JpegDecoderTest, DecodesColoursAndProgressiveGrey) {
    const auto colours = Decode(std::string(test::kRgbJpeg));
    const auto grey = Decode(std::string(test::kGreyJpegHead) + std::string(test::kGreyJpegScans));
    ASSERT_TRUE(colours && colours->width == 16 && colours->pixels.size() == 128);
    ASSERT_TRUE(grey && grey->width == 8 && grey->pixels.size() == 128);
    for (std::size_t i = 0; i < 128; ++i) {
        ASSERT_TRUE(IsNear(colours->pixels[i], i % 16 < 8 ? 0xFFC81E3C : 0xFF1428DC)) << i;
        ASSERT_TRUE(IsNear(grey->pixels[i], i < 64 ? 0xFF282828 : 0xFFC8C8C8)) << i;
    }
}

TEST(JpegDecoderTest, DecodesFourInksInBothDirections) {
    // Without the marker the same numbers (Y 148, Cb 145, Cr 23, K 200) are cyan, magenta, yellow and black.
    for (const auto& [marker, expected] : {std::pair{test::kAdobeMarker, 0xFFC81E3C}, {"", 0xFF171832}}) {
        const auto bitmap = Decode("ffd8" + std::string(marker) + std::string(test::kInkJpeg));
        ASSERT_TRUE(bitmap && bitmap->pixels.size() == 64);
        for (const std::uint32_t pixel : bitmap->pixels) ASSERT_TRUE(IsNear(pixel, expected)) << std::hex << pixel;
    }
}

TEST(JpegDecoderTest, RefusesDamageThatTheLibraryWouldPaintOver) {
    const std::string whole(test::kRgbJpeg);
    EXPECT_FALSE(Decode(whole.substr(0, whole.size() - 8) + "ffd9"));  // two bytes of the scan are missing
    EXPECT_FALSE(Decode(whole.substr(0, whole.size() - 4)));           // no end mark
}

TEST(JpegDecoderTest, GivesUpOnEndlessScans) {
    const auto decode = [](int count) {
        std::string file(test::kGreyJpegHead);
        // The scan of the averages, each time in full precision.
        for (int i = 0; i < count; ++i) file += "ffda0008 01 0100 00 00 00 09b5bf";
        return Decode(file + "ffd9");
    };
    EXPECT_TRUE(decode(64));
    EXPECT_FALSE(decode(65));
}

}  // namespace
}  // namespace brennvar
