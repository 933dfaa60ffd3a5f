#include "base/VersionBlock.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string_view>
#include <vector>

namespace brennvar {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

// A block in 16-bit units, written out by hand; the offsets are in bytes.
std::u16string SampleBlock(std::u16string_view tableName = u"040904B0"sv) {
    std::u16string block;
    block += u"\x011C\x0034\0VS_VERSION_INFO\0\0"sv;  // 0: the root, its fixed part follows the key
    block += std::u16string(26, u'\0');
    block += u"\x007C\0\1StringFileInfo\0\x0058\0\1"sv;  // 92 and 128
    (block += tableName) += u'\0';
    block += u"\x0040\x000C\1FileDescription\0\0Mail Reader\0"sv;                       // 152
    return block + u"\x0044\0\1VarFileInfo\0\0\x0024\4\0Translation\0\0\x0409\x04B0"s;  // 216, 248 and 280
}

// In memory of exactly its size, so that the sanitizer sees every step over the end.
std::vector<std::byte> Bytes(std::u16string_view block) {
    std::vector<std::byte> bytes(block.size() * 2);
    std::memcpy(bytes.data(), block.data(), bytes.size());
    return bytes;
}

TEST(VersionBlockTest, FindsTheDescriptionInTheTableOfTheFirstPair) {
    std::u16string block = SampleBlock() + std::u16string(150, u'x');  // what follows is not looked at
    EXPECT_EQ(FindFileDescription(Bytes(block)), u"Mail Reader");
    EXPECT_EQ(FindFileDescription(Bytes(SampleBlock(u"040904b0"))), u"Mail Reader");  // in either case
    EXPECT_EQ(FindFileDescription(Bytes(SampleBlock(u"040704B0"))), u"");             // another language's table
    block[(216 - 2) / 2] = u'!';                                                      // unterminated
    EXPECT_EQ(FindFileDescription(Bytes(block)), u"Mail Reader!");
    block[152 / 2 + 1] = 0;  // the value size of the description
    EXPECT_EQ(FindFileDescription(Bytes(block)), u"");
}

TEST(VersionBlockTest, FindsNothingInABlockThatIsCutAnywhere) {
    const std::vector<std::byte> bytes = Bytes(SampleBlock());
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(size);
        EXPECT_EQ(FindFileDescription(std::vector<std::byte>(bytes.begin(), end)), u"") << size;
    }
}

}  // namespace
}  // namespace brennvar
