#include "config/OptionTable.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace brennvar {
namespace {

TEST(OptionTableTest, FindsWhatIsInItAndNothingElse) {
    EXPECT_EQ(OptionTable().size(), 71U);
    for (const OptionInfo& info : OptionTable()) EXPECT_EQ(FindOption(static_cast<std::uint32_t>(info.id)), &info);
    for (const std::uint32_t unknown : {0U, 10U, 71U, 77U, 80U, 0xFFFFFFFFU})
        EXPECT_EQ(FindOption(unknown), nullptr);
}

TEST(OptionTableTest, KeepsEveryRowConsistent) {
    std::set<int> numbers;
    for (const OptionInfo& info : OptionTable()) {
        if (info.kind == OptionKind::Flag) {
            EXPECT_LE(info.fallback, 1U) << info.english;
            EXPECT_FALSE(info.english.empty());
        }
        if (info.kind == OptionKind::Text) {
            EXPECT_EQ(info.fallback, 0U) << info.english;
        }
        if (info.textNumber != 0) {
            EXPECT_TRUE(numbers.insert(info.textNumber).second) << info.english;
        }
    }
}

TEST(OptionTableTest, LetsOnlyPingingOutThroughByDefault) {
    std::set<std::string> in;
    std::set<std::string> out;
    for (std::uint32_t i = 0; i < 11; ++i) {
        const OptionInfo* incoming = FindOption(42 + i);
        const OptionInfo* outgoing = FindOption(53 + i);
        ASSERT_TRUE(incoming && outgoing);
        EXPECT_EQ(incoming->english, outgoing->english);
        if (incoming->fallback != 0) in.emplace(incoming->english);
        if (outgoing->fallback != 0) out.emplace(outgoing->english);
    }
    EXPECT_EQ(in, (std::set<std::string>{"(0) Echo Reply", "(3) Dest. Unreachable", "(11) Time Exceeded"}));
    EXPECT_EQ(out, std::set<std::string>{"(8) Echo"});
}

}  // namespace
}  // namespace brennvar
