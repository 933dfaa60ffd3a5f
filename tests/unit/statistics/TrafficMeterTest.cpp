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

TEST(TrafficMeterTest, WritesRatesWithOneDecimal) {
    struct Row {
        std::uint64_t bytes, milliseconds;
        std::string_view expected;
    };
    // Two ticks in the same millisecond; 1023.5 bytes a second round up to the next unit; the last has no limit.
    const Row rows[] = {{0, 1000, "0 B/s"},          {5, 0, "0 B/s"},
                        {1023, 1000, "1023 B/s"},    {1024, 1000, "1.0 KB/s"},
                        {2047, 2000, "1.0 KB/s"},    {1536, 500, "3.0 KB/s"},
                        {1048575, 1000, "1.0 MB/s"}, {1ULL << 52, 1000, "4096.0 TB/s"}};
    for (const Row& row : rows) {
        EXPECT_EQ(FormatRate(row.bytes, row.milliseconds), row.expected) << row.bytes << " in " << row.milliseconds;
    }
    EXPECT_EQ(FormatBytes(1023), "1023 B");
    EXPECT_EQ(FormatBytes(1536), "1.5 KB");
}

}  // namespace brennvar
