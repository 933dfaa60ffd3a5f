#include "controls/WheelSteps.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(WheelStepsTest, KeepsPartsOfAStepForTheNextTurn) {
    WheelSteps wheel;
    EXPECT_EQ(wheel.Turn(120, 3), 3);
    EXPECT_EQ(wheel.Turn(-240, 3), -6);
    // A fine wheel: four parts of a notch make its three steps.
    EXPECT_EQ(wheel.Turn(30, 3), 0);
    for (int part = 0; part < 3; ++part) EXPECT_EQ(wheel.Turn(30, 3), 1) << part;
    // Turned back before the step was whole.
    EXPECT_EQ(wheel.Turn(30, 1), 0);
    EXPECT_EQ(wheel.Turn(-60, 1), 0);
    EXPECT_EQ(wheel.Turn(-90, 1), -1);
}

}  // namespace
}  // namespace brennvar
