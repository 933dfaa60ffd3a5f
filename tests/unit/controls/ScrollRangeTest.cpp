// Where a list is scrolled to, by its bar and by the wheel.
#include "controls/ScrollRange.h"

#include <gtest/gtest.h>

#include <limits>

#include "controls/WheelSteps.h"

namespace brennvar {

TEST(ScrollRangeTest, StepsStayInTheRange) {
    const ScrollRange range{.total = 100, .page = 30, .position = 40};
    EXPECT_EQ(range.After(30), 70);
    EXPECT_EQ(range.After(std::numeric_limits<int>::max()), 70);
    EXPECT_EQ(range.After(std::numeric_limits<int>::min()), 0);
    EXPECT_EQ(range.AfterPages(1), 69);  // one row of the last page stays
    EXPECT_EQ(range.AfterPages(-1), 11);
    EXPECT_EQ((ScrollRange{.total = 9, .page = 1, .position = 4}.AfterPages(1)), 5);
    const ScrollRange small{.total = 30, .page = 30, .position = 0};
    EXPECT_FALSE(small.IsNeeded());
    EXPECT_EQ(PlaceThumb(small, 200, 24), ThumbPlace{});
    EXPECT_EQ(PositionOfThumb(small, 200, 24, 100), 0);
}

TEST(ScrollRangeTest, ThumbShowsPartAndPlaceAndIsDragged) {
    EXPECT_EQ(PlaceThumb({100, 50, 25}, 200, 24), (ThumbPlace{50, 100}));
    EXPECT_EQ(PlaceThumb({100, 50, 99}, 200, 24), (ThumbPlace{100, 100}));  // a position that has gone
    // Far more rows than pixels: the thumb keeps its size and reaches both ends.
    constexpr int kMany = 2'000'000'000;
    EXPECT_EQ(PlaceThumb({kMany, 20, 0}, 500, 24), (ThumbPlace{0, 24}));
    EXPECT_EQ(PlaceThumb({kMany, 20, kMany - 20}, 500, 24), (ThumbPlace{476, 24}));
    EXPECT_EQ(PositionOfThumb({kMany, 20, 0}, 500, 24, 476), kMany - 20);
    EXPECT_EQ(PositionOfThumb({kMany, 20, 0}, 500, 24, 9999), kMany - 20);
    EXPECT_EQ(PositionOfThumb({kMany, 20, 0}, 500, 24, -5), 0);
    // No room for a thumb: dragging does nothing.
    EXPECT_EQ(PlaceThumb({100, 10, 5}, 24, 24), ThumbPlace{});
    EXPECT_EQ(PositionOfThumb({100, 10, 5}, 24, 24, 20), 5);
    // As many pixels of room as positions or more: each position has its own place.
    for (int position = 0; position <= 190; ++position) {
        const ScrollRange range{200, 10, position};
        ASSERT_EQ(PositionOfThumb(range, 400, 24, PlaceThumb(range, 400, 24).offset), position);
    }
}

TEST(WheelStepsTest, KeepsPartsOfAStepForTheNextTurn) {
    WheelSteps wheel;
    EXPECT_EQ(wheel.Turn(-240, 3), -6);
    // A fine wheel: four parts of a notch make its three steps.
    EXPECT_EQ(wheel.Turn(30, 3), 0);
    for (int part = 0; part < 3; ++part) EXPECT_EQ(wheel.Turn(30, 3), 1) << part;
    // Turned back before the step was whole.
    EXPECT_EQ(wheel.Turn(30, 1), 0);
    EXPECT_EQ(wheel.Turn(-60, 1), 0);
    EXPECT_EQ(wheel.Turn(-90, 1), -1);
}

}  // namespace brennvar
