#include "statistics/Statistics.h"

#include <gtest/gtest.h>

#include "statistics/TrafficMeter.h"

namespace brennvar {
namespace {

std::int32_t Last(const PushGraphSamples& graph) {
    return graph.Lines()[0].samples.back();
}

TEST(TrafficMeterTest, StartsAtZeroAndNeverGoesBelow) {
    TrafficMeter meter;
    EXPECT_EQ(meter.Tick({5'000'000'000, 7, {}}), (TrafficIncrease{0, 0}));
    EXPECT_EQ(meter.Tick({5'000'000'300, 7, {}}), (TrafficIncrease{300, 0}));
    // The driver was loaded anew: the counters start again, each for itself.
    EXPECT_EQ(meter.Tick({100, 9, {}}), (TrafficIncrease{0, 2}));
    EXPECT_EQ(meter.Tick({150, 9, {}}), (TrafficIncrease{50, 0}));
}

TEST(StatisticsTest, ScalesTheTrafficGraphsAnewEachSecond) {
    const struct {
        std::uint64_t bytes;
        std::int32_t maximum, sample;
        std::string_view label;
    } rows[] = {{511'999, 512'000, 511'999, "500 KB"},
                {512'000, 1'024'000, 512'000, "1000 KB"},
                {1'023'999, 1'024'000, 1'023'999, "1000 KB"},
                {1'024'000, 10'240'000, 1'024'000, "10000 KB"},
                {~std::uint64_t{0}, 10'240'000, 10'240'000, "10000 KB"},
                {7, 512'000, 7, "500 KB"}};
    Statistics statistics;
    for (const auto& row : rows) {
        statistics.Tick(TrafficIncrease{row.bytes, 3}, 1000);
        const PushGraphSamples& graph = statistics.Incoming();
        EXPECT_EQ(graph.GetRange().maximum, row.maximum) << row.bytes;
        EXPECT_EQ(graph.GetRange().maximumLabel, row.label) << row.bytes;
        EXPECT_EQ(Last(graph), row.sample) << row.bytes;
        EXPECT_EQ(statistics.Outgoing().GetRange().maximum, 512'000);
        EXPECT_EQ(Last(statistics.Outgoing()), 3);
    }
    EXPECT_EQ(statistics.Incoming().Lines()[0].samples.size(), 1 + std::size(rows));  // 0 at the start
}

TEST(StatisticsTest, KnowsPeakAndAverageOfTheLastSecondsBeyondTheRangeOfTheGraph) {
    using Rates = RecentTraffic::Rates;
    Statistics statistics;
    EXPECT_EQ(statistics.RecentIn().OfLast(9), Rates());
    statistics.Tick(TrafficIncrease{7'000, 7'000},
                    86'400'000);  // no second has passed, but the time since the boot
    EXPECT_EQ(statistics.RecentIn().OfLast(9), Rates());
    statistics.Tick(TrafficIncrease{50'000'000, 10}, 1000);
    statistics.Tick(TrafficIncrease{2'000, 600}, 2000);
    statistics.Tick(std::nullopt, 0);
    statistics.Tick(TrafficIncrease{3'000, 0}, 1000);
    statistics.Tick(TrafficIncrease{5'000, 0}, 0);  // twice in a millisecond: no rate
    EXPECT_EQ(statistics.RecentIn().OfLast(9), (Rates{50'000'000, 12'501'250}));
    EXPECT_EQ(statistics.RecentIn().OfLast(2), (Rates{3'000, 1'666}));
    EXPECT_EQ(statistics.RecentOut().OfLast(2), (Rates{300, 200}));
    for (std::size_t tick = 0; tick < RecentTraffic::kMostTicks; ++tick) {
        statistics.Tick(TrafficIncrease{UINT64_MAX, 1}, 1);  // of a driver that is confused
    }
    EXPECT_GT(statistics.RecentIn().OfLast(1).average, 1ULL << 62);
    EXPECT_EQ(statistics.RecentOut().OfLast(RecentTraffic::kMostTicks + 9), (Rates{1'000, 1'000}))
        << "the rest is gone";
}

TEST(StatisticsTest, CountsTheAttacksOfEachSecond) {
    Statistics statistics;
    // In the first tick no second has passed. Without a driver nothing moves, and nothing is forgotten.
    const std::pair<int, bool> ticks[] = {{3, true}, {2, false}, {1, true}, {0, true}, {60, true}};
    for (const auto& [attacks, hasDriver] : ticks) {
        for (int attack = 0; attack < attacks; ++attack) statistics.CountAttack();
        statistics.Tick(hasDriver ? std::optional(TrafficIncrease{}) : std::nullopt, hasDriver ? 1000 : 0);
        EXPECT_EQ(statistics.CurrentRates().has_value(), hasDriver);
    }
    EXPECT_EQ(statistics.Attacks().Lines()[0].samples, (std::vector<std::int32_t>{0, 0, 3, 0, 50}));
    EXPECT_EQ(statistics.AttacksOfLastTick(), 60U);
    EXPECT_EQ(statistics.AttackCount(), 66U);
}

TEST(StatisticsTest, KeepsSumsRatesAndTheLastNotices) {
    Statistics statistics;
    int changes = 0;
    statistics.Watch([&] { ++changes; });
    statistics.Tick(TrafficIncrease{1024, 100}, 1000);
    statistics.Tick(TrafficIncrease{3072, 200}, 2000);
    EXPECT_EQ(statistics.Totals(), (TrafficIncrease{4096, 300}));
    ASSERT_TRUE(statistics.CurrentRates());
    EXPECT_EQ(statistics.CurrentRates()->in, "1.5 KB/s");
    EXPECT_EQ(statistics.CurrentRates()->out, "100 B/s");
    statistics.Tick(TrafficIncrease{UINT64_MAX, 0}, 1000);  // of a driver that is confused
    EXPECT_EQ(statistics.Totals(), (TrafficIncrease{UINT64_MAX, 300}));
    for (FileTime time = 1; time <= 51; ++time) statistics.AddNotice("notice " + std::to_string(time), time);
    statistics.AddNotice("", 52);
    EXPECT_EQ(statistics.NoticeCount(), 51U);
    EXPECT_EQ(statistics.Notices().size(), 50U);
    EXPECT_EQ(statistics.Notices().front().text, "notice 51");
    EXPECT_EQ(statistics.Notices().back().time, 2U);
    EXPECT_EQ(changes, 3 + 51);
    for (int twice = 0; twice < 2; ++twice) {
        statistics.SetMode({.mode = ProtectionMode::BlockAll, .until = 9});
        statistics.SetConnections(ConnectionCounts{4, 1});
    }
    EXPECT_EQ(changes, 3 + 51 + 2);
}

}  // namespace
}  // namespace brennvar
