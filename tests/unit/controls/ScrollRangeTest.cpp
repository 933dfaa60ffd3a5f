#include "controls/ScrollRange.h"

#include <gtest/gtest.h>

#include <limits>

namespace brennvar {
namespace {

TEST(ScrollRangeTest, StepsStayInTheRange) {
    const ScrollRange range{.total = 100, .page = 30, .position = 40};
    EXPECT_EQ(range.LastPosition(), 70);
    EXPECT_EQ(range.After(1), 41);
    EXPECT_EQ(range.After(31), 70);
    EXPECT_EQ(range.After(std::numeric_limits<int>::max()), 70);
    EXPECT_EQ(range.After(std::numeric_limits<int>::min()), 0);
    EXPECT_EQ(range.AfterPages(1), 69);  // one row of the last page stays
    EXPECT_EQ(range.AfterPages(-1), 11);
    EXPECT_EQ((ScrollRange{.total = 9, .page = 1, .position = 4}.AfterPages(1)), 5);
    for (const int total : {0, 1, 30}) {
        const ScrollRange small{.total = total, .page = 30, .position = 0};
        EXPECT_FALSE(small.IsNeeded()) << total;
        EXPECT_EQ(small.After(5), 0) << total;
        EXPECT_EQ(PlaceThumb(small, 200, 24), ThumbPlace{}) << total;
        EXPECT_EQ(PositionOfThumb(small, 200, 24, 100), 0) << total;
    }
}

TEST(ScrollRangeTest, ThumbShowsPartAndPlace) {
    EXPECT_EQ(PlaceThumb({100, 50, 0}, 200, 24), (ThumbPlace{0, 100}));
    EXPECT_EQ(PlaceThumb({100, 50, 25}, 200, 24), (ThumbPlace{50, 100}));
    EXPECT_EQ(PlaceThumb({100, 50, 50}, 200, 24), (ThumbPlace{100, 100}));
    EXPECT_EQ(PlaceThumb({100, 50, 99}, 200, 24), (ThumbPlace{100, 100}));  // a position that has gone
    // Far more rows than pixels: the thumb keeps its size and reaches both ends.
    for (const int total : {1'000'000, 2'000'000'000}) {
        EXPECT_EQ(PlaceThumb({total, 20, 0}, 500, 24), (ThumbPlace{0, 24}));
        EXPECT_EQ(PlaceThumb({total, 20, total - 20}, 500, 24), (ThumbPlace{476, 24}));
        EXPECT_EQ(PositionOfThumb({total, 20, 0}, 500, 24, 476), total - 20);
        EXPECT_EQ(PositionOfThumb({total, 20, 0}, 500, 24, 9999), total - 20);
        EXPECT_EQ(PositionOfThumb({total, 20, 0}, 500, 24, -5), 0);
    }
    // No room for a thumb: dragging does nothing.
    EXPECT_EQ(PlaceThumb({100, 10, 5}, 24, 24), ThumbPlace{});
    EXPECT_EQ(PositionOfThumb({100, 10, 5}, 24, 24, 20), 5);
    EXPECT_EQ(PlaceThumb({100, 10, 5}, -8, 24), ThumbPlace{});
}

TEST(ScrollRangeTest, DraggingAThumbToItsOwnPlaceKeepsThePosition) {
    // As many pixels of room as positions or more: each position has its own place.
    for (int total = 11; total <= 200; ++total) {
        for (int position = 0; position <= total - 10; ++position) {
            const ScrollRange range{total, 10, position};
            const ThumbPlace thumb = PlaceThumb(range, 400, 24);
            ASSERT_EQ(PositionOfThumb(range, 400, 24, thumb.offset), position) << total;
        }
    }
}

}  // namespace
}  // namespace brennvar
