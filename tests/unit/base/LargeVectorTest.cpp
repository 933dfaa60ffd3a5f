#include "base/LargeVector.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace brennvar {
namespace {

constexpr std::size_t kItems = 100'000;  // of four bytes: large

class LargeVectorTest : public ::testing::Test {
protected:
    LargeVectorTest() { LargeBlocks::GiveBackAll(); }
    ~LargeVectorTest() override { LargeBlocks::GiveBackAll(); }
};

TEST_F(LargeVectorTest, TakesTheBlockOfTheLastTableForOneOfAboutTheSameSize) {
    const std::uint32_t* last = nullptr;
    {
        LargeVector<std::uint32_t> table(kItems, 7);
        last = table.data();
        EXPECT_EQ(LargeBlocks::Kept(), 0U);
    }
    const std::size_t kept = LargeBlocks::Kept();
    EXPECT_GE(kept, kItems * sizeof(std::uint32_t));
    const LargeVector<std::uint32_t> small(1000), larger(kItems * 2);
    EXPECT_EQ(LargeBlocks::Kept(), kept) << "neither fits";
    const LargeVector<std::uint32_t> next(kItems + 100);
    EXPECT_EQ(next.data(), last);
    EXPECT_EQ(next.back(), 0U);
    EXPECT_EQ(LargeBlocks::Kept(), 0U);
}

TEST_F(LargeVectorTest, KeepsNoMoreThanItMayAndGivesAllBack) {
    constexpr std::size_t kHalf = LargeBlocks::kMostKept / 2;
    { const LargeVector<std::byte> first(kHalf), second(kHalf), third(kHalf); }
    EXPECT_EQ(LargeBlocks::Kept(), LargeBlocks::kMostKept);
    { const LargeVector<std::byte> small(LargeBlocks::kLarge - 1); }
    LargeBlocks::GiveBackAll();
    EXPECT_EQ(LargeBlocks::Kept(), 0U);
    { const LargeVector<std::byte> small(LargeBlocks::kLarge - 1); }
    EXPECT_EQ(LargeBlocks::Kept(), 0U);
    { const LargeVector<std::byte> large(LargeBlocks::kLarge); }
    EXPECT_EQ(LargeBlocks::Kept(), LargeBlocks::kLarge);
}

}  // namespace
}  // namespace brennvar
