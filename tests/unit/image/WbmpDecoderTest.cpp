#include <gtest/gtest.h>

#include "image/DecodeImage.h"
#include "unit/image/ImageSamples.h"

namespace brennvar {
namespace {

TEST(WbmpDecoderTest, PaintsOnesWhiteAndZerosBlack) {
    const auto bitmap = DecodeImage(test::FromHex(test::kWbmp));
    ASSERT_TRUE(bitmap);
    EXPECT_EQ(bitmap->width, 10);
    EXPECT_EQ(bitmap->height, 2);
    constexpr std::uint32_t kBlack = 0xFF000000, kWhite = 0xFFFFFFFF;
    std::vector<std::uint32_t> expected(20, kBlack);
    expected[0] = expected[9] = expected[10] = expected[19] = kWhite;
    EXPECT_EQ(bitmap->pixels, expected);
}

TEST(WbmpDecoderTest, RefusesWhatIsNoImageOfTypeZero) {
    for (const std::string_view hex : {
             "0000 00 01 80",                  // no width
             "0000 01 00 80",                  // no height
             "0000 808080808080808080 01 80",  // a width that does not end
             "0000 9080808001 01 80",          // a width of more than 32 bits
             "0000 818000 01",                 // 16384, but no pixels
             "0001 01 01 80",                  // another type or header
             "0000",
         }) {
        EXPECT_FALSE(DecodeImage(test::FromHex(hex))) << hex;
    }
}

}  // namespace
}  // namespace brennvar
