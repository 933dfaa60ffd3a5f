#include <gtest/gtest.h>

#include <string>

#include "unit/image/ImageSamples.h"

namespace brennvar {
namespace {

constexpr std::uint32_t kRed = 0xFFFF0000, kGreen = 0xFF00FF00, kBlue = 0xFF0000FF, kWhite = 0xFFFFFFFF;
// A canvas with four colours: red, green, blue, white.
const std::string kPalette = "91 00 00 ff0000 00ff00 0000ff ffffff";
using Pixels = std::vector<std::uint32_t>;

// The pixels of a file in hexadecimal digits; none when it is refused.
Pixels Decode(const std::string& hex) {
    return test::PixelsOf(test::FromHex(hex));
}

// An image of one row, of the stream of codes given.
Pixels DecodeRow(const std::string& width, const std::string& symbolBits, const std::string& codes) {
    return Decode("474946383761" + width + "0100" + kPalette + "2c 00000000" + width + "0100 00" + symbolBits +
                  codes);
}

TEST(GifDecoderTest, PutsTheFirstFrameOnATransparentCanvas) {
    const Pixels expected = {0, 0, 0, 0, kRed, kGreen, 0, kBlue, 0};
    EXPECT_EQ(Decode(std::string(test::kGif)), expected);
    EXPECT_EQ(Decode(std::string(test::kGif) + "2c 00000000 0300 0300 00 02 00 3b"), expected);  // a second frame
}

TEST(GifDecoderTest, TakesPaletteAndTransparencyOfTheFrame) {
    const std::string canvas = "474946383961 0100 0100", image = "2c 0000 0000 0100 0100", pixel = "02 02 4401 00";
    EXPECT_EQ(Decode(canvas + "00 00 00" + image + "80 00ff00 0000ff" + pixel), Pixels{kGreen});
    EXPECT_EQ(Decode(canvas + kPalette + image + "80 00ff00 0000ff" + pixel), Pixels{kGreen});
    EXPECT_EQ(Decode(canvas + "00 00 00" + image + "00" + pixel), Pixels{}) << "no palette";
    const std::string transparent = "21f9 04 01 0000 00 00";
    const std::pair<std::string, std::uint32_t> extensions[] = {
        {transparent, 0},
        {transparent + "21fe 01 41 00", 0},             // a comment
        {transparent + "2101 01 41 00", kRed},          // a text, which it was meant for
        {transparent + "21f9 04 00 0000 00 00", kRed},  // taken back
        {"21f9 04 01 0000 01 00", kRed},                // another colour
        {"21f9 03 01 0000 00", kRed}};                  // too short
    for (const auto& [extension, expected] : extensions) {
        EXPECT_EQ(Decode(canvas + kPalette + extension + image + "00" + pixel), Pixels{expected}) << extension;
    }
}

TEST(GifDecoderTest, PutsInterlacedRowsInOrder) {
    // 1 x 5; stored are the rows 0, 4, 2, 1, 3 with the colours 0, 1, 2, 3, 0.
    EXPECT_EQ(Decode("474946383761 0100 0500" + kPalette + "2c 0000 0000 0100 0500 40 02 03 443450 00"),
              (Pixels{kRed, kWhite, kBlue, kRed, kGreen}));
}

TEST(GifDecoderTest, FollowsTheCodeThatIsJustBeingAdded) {
    // clear 4, symbol 1, then 6, which stands for "1 1" only now, then 1.
    EXPECT_EQ(DecodeRow("0400", "02", "02 8c53 00"), (Pixels{kGreen, kGreen, kGreen, kGreen}));
    EXPECT_EQ(DecodeRow("0400", "02", "01 8c 01 53 00"),
              (Pixels{kGreen, kGreen, kGreen, kGreen}));  // in two blocks
}

TEST(GifDecoderTest, RefusesCodesThatTheStreamCannotHave) {
    const std::string rows[][3] = {
        {"0300", "02", "02 cc01 00"},                             // clear, 1, 7 where 6 is the next
        {"0300", "02", "02 b400 00"},                             // clear, then 6: no string yet
        {"0400", "02", "02 8c0b 00"},                             // the stream ends before the image is full
        {"0100", "03", "02 4800 00"},                             // colour 4 of four
        {"0100", "01", "02 4401 00"},                             // too few and too many bits a symbol
        {"0100", "09", "02 0002 00"}, {"0100", "02", "02 4401"},  // the blocks do not end
    };
    for (const auto& row : rows) EXPECT_EQ(DecodeRow(row[0], row[1], row[2]), Pixels{}) << row[2];
}

TEST(GifDecoderTest, RefusesFramesThatAreEmptyOrLeaveTheCanvas) {
    const std::string head = "474946383761 0200 0200" + kPalette + "2c";
    const std::string pixel = "00 02 02 4401 00";
    EXPECT_EQ(Decode(head + "0100 0100 0100 0100" + pixel), (Pixels{0, 0, 0, kRed}));
    for (const char* place :
         {"0200 0100 0100 0100", "0100 0200 0100 0100", "ffff ffff 0100 0100", "0000 0000 0000 0100"}) {
        EXPECT_EQ(Decode(head + place + pixel), Pixels{}) << place;
    }
}

// Codes never grow over 12 bits, and a full table stays as it is until a clear code.
TEST(GifDecoderTest, KeepsAFullTable) {
    constexpr unsigned kCount = 6000;
    std::string stream;
    unsigned bits = 0, bitCount = 0;
    const auto put = [&](unsigned code, unsigned width) {
        bits |= code << bitCount;
        for (bitCount += width; bitCount >= 8; bitCount -= 8, bits >>= 8) stream += static_cast<char>(bits);
    };
    Pixels expected;
    put(4, 3);
    for (unsigned i = 0; i < kCount; ++i) {
        // Before the i-th symbol the table holds the first 6 codes and one for each symbol but the first.
        unsigned width = 3;
        while (width < 12 && 6 + (i == 0 ? 0 : i - 1) >= 1U << width) ++width;
        const unsigned symbol = (i * i >> 3) % 4;
        put(symbol, width);
        expected.push_back(Pixels{kRed, kGreen, kBlue, kWhite}[symbol]);
    }
    put(5, 12);
    put(0, 7);
    const auto bytes = std::as_bytes(std::span(stream));
    auto file = test::FromHex("474946383761 7017 0100" + kPalette + "2c 0000 0000 7017 0100 00 02");
    for (std::size_t at = 0; at < bytes.size(); at += 255) {
        const auto piece = bytes.subspan(at, std::min<std::size_t>(255, bytes.size() - at));
        file.push_back(static_cast<std::byte>(piece.size()));
        file.insert(file.end(), piece.begin(), piece.end());
    }
    file.push_back(std::byte{0});
    EXPECT_EQ(test::PixelsOf(file), expected);
}

}  // namespace
}  // namespace brennvar
