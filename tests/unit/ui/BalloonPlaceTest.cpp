#include "ui/BalloonPlace.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(BalloonPlaceTest, TakesTheFirstSideWithRoomAndPointsAtTheAnchor) {
    // A task bar of 40 below; a second screen to the left is not ours.
    const PixelBox area{0, 0, 1000, 760};
    const BalloonShape shape{.width = 200, .height = 100, .tipLength = 10, .corner = 8};
    const BalloonShape below{.width = 200, .height = 100, .tipLength = 10, .corner = 8, .isBelow = true};
    struct Row {
        PixelBox anchor;
        BalloonPlace expected;
    };
    const Row rows[] = {
        // Above, centred.
        {{490, 400, 510, 420}, {{400, 290, 600, 390}, TipSide::Bottom, 500}},
        // Just enough room above, and one pixel too little.
        {{490, 110, 510, 130}, {{400, 0, 600, 100}, TipSide::Bottom, 500}},
        {{490, 109, 510, 129}, {{400, 139, 600, 239}, TipSide::Top, 500}},
        // At the sides of the screen the body moves in, and the tip keeps off its ends.
        {{0, 400, 20, 420}, {{0, 290, 200, 390}, TipSide::Bottom, 18}},
        // The notification area: from the edge of the work area.
        {{900, 765, 920, 795}, {{800, 650, 1000, 750}, TipSide::Bottom, 910}},
        // As high as the screen: left of it, or right of it.
        {{500, 0, 520, 760}, {{290, 330, 490, 430}, TipSide::Right, 380}},
        {{100, 20, 120, 740}, {{130, 330, 330, 430}, TipSide::Left, 380}},
        // No side has room.
        {area, {{400, 0, 600, 100}, TipSide::Bottom, 500}},
    };
    // Below rather than above: just enough room, and one pixel too little; and where there is room on a side only.
    EXPECT_EQ(PlaceBalloon({490, 630, 510, 650}, below, area),
              (BalloonPlace{{400, 660, 600, 760}, TipSide::Top, 500}));
    EXPECT_EQ(PlaceBalloon({490, 631, 510, 651}, below, area),
              (BalloonPlace{{400, 521, 600, 621}, TipSide::Bottom, 500}));
    EXPECT_EQ(PlaceBalloon({500, 0, 520, 760}, below, area), PlaceBalloon({500, 0, 520, 760}, shape, area));
    for (const Row& row : rows) {
        EXPECT_EQ(PlaceBalloon(row.anchor, shape, area), row.expected) << row.anchor.left << "," << row.anchor.top;
    }
}

TEST(BalloonPlaceTest, IsCutToAScreenThatIsSmallerThanIt) {
    const PixelBox area{-320, 40, 0, 240};
    EXPECT_EQ(PlaceBalloon({-60, 100, -40, 116}, {5000, 5000, 10, 8}, area),
              (BalloonPlace{{-310, 40, 0, 230}, TipSide::Bottom, -50}));
}

}  // namespace brennvar
