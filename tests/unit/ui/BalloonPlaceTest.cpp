#include "ui/BalloonPlace.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(BalloonPlaceTest, TakesTheFirstSideWithRoomAndPointsAtTheAnchor) {
    // A task bar of 40 below; a second screen to the left is not ours.
    const PixelBox area{0, 0, 1000, 760};
    const BalloonShape shape{.width = 200, .height = 100, .tipLength = 10, .corner = 8};
    const BalloonShape below{.width = 200, .height = 100, .tipLength = 10, .corner = 8, .isBelow = true};
    const struct {
        PixelBox anchor;
        BalloonPlace expected;
        const BalloonShape& shape;
    } rows[] = {
        // Just enough room above or below, and one pixel too little.
        {{490, 110, 510, 130}, {{400, 0, 600, 100}, TipSide::Bottom, 500}, shape},
        {{490, 109, 510, 129}, {{400, 139, 600, 239}, TipSide::Top, 500}, shape},
        {{490, 630, 510, 650}, {{400, 660, 600, 760}, TipSide::Top, 500}, below},
        {{490, 631, 510, 651}, {{400, 521, 600, 621}, TipSide::Bottom, 500}, below},
        // At the sides of the screen the body moves in, and the tip keeps off its ends.
        {{0, 400, 20, 420}, {{0, 290, 200, 390}, TipSide::Bottom, 18}, shape},
        // The notification area: from the edge of the work area.
        {{900, 765, 920, 795}, {{800, 650, 1000, 750}, TipSide::Bottom, 910}, shape},
        // As high as the screen: left of it, or right of it.
        {{500, 0, 520, 760}, {{290, 330, 490, 430}, TipSide::Right, 380}, below},
        {{100, 20, 120, 740}, {{130, 330, 330, 430}, TipSide::Left, 380}, shape},
        {area, {{400, 0, 600, 100}, TipSide::Bottom, 500}, shape},  // no side has room
    };
    for (const auto& row : rows) {
        EXPECT_EQ(PlaceBalloon(row.anchor, row.shape, area), row.expected) << &row - rows;
    }
    EXPECT_EQ(PlaceBalloon({-60, 100, -40, 116}, {5000, 5000, 10, 8}, {-320, 40, 0, 240}),
              (BalloonPlace{{-310, 40, 0, 230}, TipSide::Bottom, -50}))
        << "cut to a screen that is smaller than it";
}

}  // namespace brennvar
