#include "base/Bytes.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(BytesTest, CutsTextAtSizeMinusOneAndZeroesTheRest) {
    char field[5] = {'x', 'x', 'x', 'x', 'x'};
    PutText(field, "abcdef");
    EXPECT_EQ(std::string_view(field, 5), std::string_view("abcd\0", 5));
    PutText(field, "a");
    EXPECT_EQ(std::string_view(field, 5), std::string_view("a\0\0\0\0", 5));
    PutText(field, "");
    EXPECT_EQ(std::string_view(field, 5), std::string_view("\0\0\0\0\0", 5));
}

TEST(BytesTest, TakesTheLastByteOfATextAsZero) {
    const char unterminated[4] = {'a', 'b', 'c', 'd'};
    EXPECT_EQ(TextOf(unterminated), "abc");
    const char early[4] = {'a', 0, 'c', 'd'};
    EXPECT_EQ(TextOf(early), "a");
    const char single[1] = {'a'};
    EXPECT_EQ(TextOf(single), "");
}

TEST(BytesTest, DecodesOnlyWholeRecords) {
    const std::array<std::byte, 5> bytes = {std::byte{1}, std::byte{2}, std::byte{0}, std::byte{0}, std::byte{9}};
    EXPECT_EQ(DecodeRecord<std::uint32_t>(bytes), 0x201U);
    EXPECT_EQ(DecodeRecord<std::uint32_t>(std::span(bytes).first(3)), std::nullopt);
}

}  // namespace
}  // namespace brennvar
