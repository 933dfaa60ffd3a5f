#include "base/LargeVector.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace brennvar {

TEST(LargeVectorTest, TakesTheLastBlockOfAboutTheSameSizeAndKeepsNoMoreThanItMay) {
    constexpr std::size_t kItems = 100'000;  // of four bytes: large
    LargeBlocks::GiveBackAll();
    const std::uint32_t* last = nullptr;
    {
        LargeVector<std::uint32_t> table(kItems, 7);
        last = table.data();
    }
    const std::size_t kept = LargeBlocks::Kept();
    EXPECT_GE(kept, kItems * sizeof(std::uint32_t));
    {
        const LargeVector<std::uint32_t> small(1000), larger(kItems * 2);
        EXPECT_EQ(LargeBlocks::Kept(), kept) << "neither fits";
        const LargeVector<std::uint32_t> next(kItems + 100);
        EXPECT_EQ(next.data(), last);
        EXPECT_EQ(next.back(), 0U);
        EXPECT_EQ(LargeBlocks::Kept(), 0U);
    }
    LargeBlocks::GiveBackAll();
    constexpr std::size_t kHalf = LargeBlocks::kMostKept / 2 / sizeof(std::uint64_t);
    { const LargeVector<std::uint64_t> first(kHalf), second(kHalf), third(kHalf); }
    EXPECT_EQ(LargeBlocks::Kept(), LargeBlocks::kMostKept);
    LargeBlocks::GiveBackAll();
    { const LargeVector<std::byte> small(LargeBlocks::kLarge - 1); }
    EXPECT_EQ(LargeBlocks::Kept(), 0U);
    { const LargeVector<std::byte> large(LargeBlocks::kLarge); }
    EXPECT_EQ(LargeBlocks::Kept(), LargeBlocks::kLarge);
    LargeBlocks::GiveBackAll();
}

}  // namespace brennvar
