#include "ui/BalloonPlace.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(BalloonPlaceTest, TakesTheFirstSideWithRoomAndPointsAtTheAnchor) {
    // A task bar of 40 below; a second screen to the left is not ours.
    const PixelBox area{0, 0, 1000, 760};
    const BalloonShape shape{.width = 200, .height = 100, .tipLength = 10, .corner = 8};
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
        {{1100, 900, 1120, 920}, {{800, 650, 1000, 750}, TipSide::Bottom, 982}},
        // As high as the screen: left of it, or right of it.
        {{500, 0, 520, 760}, {{290, 330, 490, 430}, TipSide::Right, 380}},
        {{100, 20, 120, 740}, {{130, 330, 330, 430}, TipSide::Left, 380}},
        // No side has room.
        {area, {{400, 0, 600, 100}, TipSide::Bottom, 500}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PlaceBalloon(row.anchor, shape, area), row.expected) << row.anchor.left << "," << row.anchor.top;
    }
}

TEST(BalloonPlaceTest, StaysInsideWithItsTipWhateverItsSizeAndTheScreen) {
    const PixelBox areas[] = {{-1280, 40, 0, 1024}, {0, 0, 320, 200}};
    const BalloonShape shapes[] = {{1, 1, 10, 8}, {300, 90, 10, 8}, {5000, 40, 10, 8}, {40, 5000, 10, 8}};
    for (const PixelBox& area : areas) {
        for (const BalloonShape& shape : shapes) {
            for (int x = area.left - 50; x <= area.right + 50; x += 37) {
                for (int y = area.top - 50; y <= area.bottom + 50; y += 37) {
                    const BalloonPlace place = PlaceBalloon({x, y, x + 16, y + 16}, shape, area);
                    PixelBox all = place.body;
                    if (place.side == TipSide::Bottom) all.bottom += shape.tipLength;
                    if (place.side == TipSide::Top) all.top -= shape.tipLength;
                    if (place.side == TipSide::Right) all.right += shape.tipLength;
                    if (place.side == TipSide::Left) all.left -= shape.tipLength;
                    ASSERT_TRUE(all.left >= area.left && all.top >= area.top && all.right <= area.right &&
                                all.bottom <= area.bottom)
                        << x << "," << y << " " << shape.width << "x" << shape.height;
                }
            }
        }
    }
}

}  // namespace brennvar
