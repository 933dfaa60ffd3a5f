#include "base/VersionBlock.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string_view>
#include <vector>

namespace brennvar {
namespace {

using namespace std::string_view_literals;

// A block in 16-bit units, written out by hand; the offsets are in bytes.
std::u16string SampleBlock(std::u16string_view tableName = u"040904B0"sv) {
    std::u16string block;
    block += {284, 52, 0};  // 0: the root, its fixed part follows the key
    block += u"VS_VERSION_INFO\0\0"sv;
    block += std::u16string(26, u'\0');
    block += {124, 0, 1};  // 92
    block += u"StringFileInfo\0"sv;
    block += {88, 0, 1};  // 128
    block += tableName;
    block += u"\0"sv;
    block += {64, 12, 1};  // 152
    block += u"FileDescription\0\0"sv;
    block += u"Mail Reader\0"sv;
    block += {68, 0, 1};  // 216
    block += u"VarFileInfo\0\0"sv;
    block += {36, 4, 0};  // 248
    block += u"Translation\0\0"sv;
    block += {0x0409, 0x04B0};  // 280
    return block;               // 284
}

// In memory of exactly its size, so that the sanitizer sees every step over the end.
std::vector<std::byte> Bytes(std::u16string_view block) {
    std::vector<std::byte> bytes(block.size() * 2);
    std::memcpy(bytes.data(), block.data(), bytes.size());
    return bytes;
}

TEST(VersionBlockTest, FindsTheDescriptionInTheTableOfTheFirstPair) {
    EXPECT_EQ(FindFileDescription(Bytes(SampleBlock())), u"Mail Reader");
    EXPECT_EQ(FindFileDescription(Bytes(SampleBlock(u"040904b0"))), u"Mail Reader");  // in either case
    EXPECT_EQ(FindFileDescription(Bytes(SampleBlock(u"040704B0"))), u"");             // another language's table
}

TEST(VersionBlockTest, IgnoresWhatFollowsTheBlock) {
    EXPECT_EQ(FindFileDescription(Bytes(SampleBlock() + std::u16string(150, u'x'))), u"Mail Reader");
}

TEST(VersionBlockTest, YieldsNothingForAMissingValue) {
    std::u16string emptyText = SampleBlock();
    emptyText[152 / 2 + 1] = 0;  // the value size of the description
    EXPECT_EQ(FindFileDescription(Bytes(emptyText)), u"");
    std::u16string noPair = SampleBlock();
    noPair[248 / 2 + 1] = 0;
    EXPECT_EQ(FindFileDescription(Bytes(noPair)), u"");
    EXPECT_EQ(FindFileDescription({}), u"");
}

TEST(VersionBlockTest, EndsAnUnterminatedTextAtItsNode) {
    std::u16string block = SampleBlock();
    block[(216 - 2) / 2] = u'!';
    EXPECT_EQ(FindFileDescription(Bytes(block)), u"Mail Reader!");
}

TEST(VersionBlockTest, SurvivesEveryCutAndEveryChangedUnit) {
    const std::u16string whole = SampleBlock();
    const std::vector<std::byte> bytes = Bytes(whole);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const std::vector<std::byte> cut(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(FindFileDescription(cut), u"") << size;
    }
    for (std::size_t index = 0; index < whole.size(); ++index) {
        for (const char16_t unit : {u'\0', u'\1', u'\7', u'\xFFFF'}) {
            std::u16string damaged = whole;
            damaged[index] = unit;
            EXPECT_LE(FindFileDescription(Bytes(damaged)).size(), whole.size()) << index;
        }
    }
}

}  // namespace
}  // namespace brennvar
