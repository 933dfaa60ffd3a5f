#include "statistics/TrafficMeter.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(TrafficMeterTest, StartsAtZeroAndNeverGoesBelow) {
    TrafficMeter meter;
    EXPECT_EQ(meter.Tick({5'000'000'000, 7, {}}), (TrafficIncrease{0, 0}));
    EXPECT_EQ(meter.Tick({5'000'000'300, 7, {}}), (TrafficIncrease{300, 0}));
    // The driver was loaded anew: the counters start again, each for itself.
    EXPECT_EQ(meter.Tick({100, 9, {}}), (TrafficIncrease{0, 2}));
    EXPECT_EQ(meter.Tick({150, 9, {}}), (TrafficIncrease{50, 0}));
}

}  // namespace brennvar
