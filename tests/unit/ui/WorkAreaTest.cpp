#include "ui/WorkArea.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(WorkAreaTest, MovesAndShrinksIntoTheArea) {
    const RECT area{-800, 20, 0, 600};  // a screen to the left of the main one
    struct Row {
        RECT given;
        RECT expected;
    };
    const Row rows[] = {
        {{-700, 100, -600, 200}, {-700, 100, -600, 200}},  // inside: stays
        {{-900, 0, -800, 100}, {-800, 20, -700, 120}},
        {{-50, 550, 50, 650}, {-100, 500, 0, 600}},
        {{-10'000, -10'000, 10'000, 10'000}, {-800, 20, 0, 600}},  // larger than the area in both directions
        {{500, 30, 500, 30}, {0, 30, 0, 30}},
    };
    for (const Row& row : rows) {
        const RECT got = FitInto(row.given, area);
        EXPECT_TRUE(::EqualRect(&got, &row.expected))
            << got.left << "," << got.top << "," << got.right << "," << got.bottom;
    }
    const RECT centered = CenterIn(area, {200, 10'000});
    const RECT expected{-500, 20, -300, 600};
    EXPECT_TRUE(::EqualRect(&centered, &expected));
}

}  // namespace
}  // namespace brennvar
