#include "lists/IconCache.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(IconCacheTest, ReadsTheLastOnesFirstAndKeepsTheLastUsed) {
    IconCache<std::string> icons(2, 3);
    const auto load = [&] {
        const std::optional<std::string> path = icons.NextWanted();
        if (path) icons.Put(*path + "!");
        return path.value_or("none");
    };
    for (const char* path : {"a", "b", "c", "b", "d"}) EXPECT_EQ(icons.Find(path), nullptr);
    for (const char* path : {"d", "b", "c", "none"}) EXPECT_EQ(load(), path) << "a has scrolled away";
    EXPECT_EQ(icons.Count(), 2U);
    ASSERT_NE(icons.Find("b"), nullptr);
    EXPECT_EQ(*icons.Find("b"), "b!");
    EXPECT_EQ(icons.Find("d"), nullptr) << "the first of three to be used";
    EXPECT_EQ(icons.NextWanted(), "d");
    EXPECT_EQ(icons.Find("d"), nullptr);
    EXPECT_EQ(icons.NextWanted(), std::nullopt) << "one at a time";
    icons.Put("late");
    EXPECT_EQ(icons.Find("c"), nullptr) << "b was used after it";
    EXPECT_EQ(*icons.Find("d"), "late");
}

}  // namespace
}  // namespace brennvar
