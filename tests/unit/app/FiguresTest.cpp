#include "app/Figures.h"

#include <gtest/gtest.h>

#include "support/CommanderRig.h"
#include "support/FakeClock.h"
#include "support/FakeDevice.h"
#include "support/FakeSessionView.h"
#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

class FiguresTest : public testing::Test, protected ModeView {
protected:
    test::FakeDriver driver;
    test::FakeClock clock;
    test::CommanderRig rig;
    test::FakeTaskQueue reads;
    test::FakeSessionView view;
    int modeReadings = 0;
    ProtectionModes modes{clock,
                          rig.language,
                          rig.commander,
                          reads,
                          [this](std::chrono::milliseconds) {
                              ++modeReadings;
                              return std::optional(ProtectionMode::BlockAll);
                          },
                          *this};
    Statistics statistics;
    ConnectionTables tables{driver, reads, clock};
    Figures figures{clock, driver, tables, rig.link, modes, statistics};

    void OnModeChanged() override { figures.ShowMode(view); }
    void OnIdleMode(ProtectionMode mode) override { view.ShowIdleMode(mode); }

    void Tick(std::uint64_t in, std::uint64_t out, std::chrono::milliseconds after = 1s) {
        TrafficTotals totals{};
        totals.bytesIn = in;
        totals.bytesOut = out;
        const auto bytes = RecordBytes(totals);
        driver.answers[kControlReadTotals].assign(bytes.begin(), bytes.end());
        TickAsItIs(after);
    }
    void TickAsItIs(std::chrono::milliseconds after = 1s) {
        clock.Pass(after);
        figures.Tick(view);
        reads.RunAll();
    }
    void SetConnections(std::size_t connectionCount, std::size_t listenerCount) {
        driver.answers[kControlReadConnections].assign(connectionCount * sizeof(ConnectionEntry), std::byte{0});
        driver.answers[kControlReadListeners].assign(listenerCount * sizeof(ListenerEntry), std::byte{0});
    }
};

TEST_F(FiguresTest, MeasuresTrafficFromOneReadingOfTheDriverToTheNext) {
    Tick(1000, 2000);
    EXPECT_EQ(view.traffic, (TrafficIncrease{0, 0}));
    Tick(1500, 2100, 900ms);
    EXPECT_EQ(view.traffic, (TrafficIncrease{500, 100}));
    EXPECT_EQ(view.milliseconds, 900U);
    EXPECT_EQ(statistics.Totals(), (TrafficIncrease{500, 100}));
    driver.answers.erase(kControlReadTotals);
    TickAsItIs();
    EXPECT_EQ(view.traffic, std::nullopt);
    EXPECT_EQ(statistics.CurrentRates(), std::nullopt);
    Tick(9500, 2100);
    EXPECT_EQ(view.traffic, (TrafficIncrease{8000, 0}));
    EXPECT_EQ(view.milliseconds, 2000U) << "with the time in which it could not be read";
}

TEST_F(FiguresTest, OnlyAnIdleSecondReachesTheIconAndOnlyAWindowThatIsSeenHearsTheModeOfOthers) {
    view.isSeen = false;
    Tick(1, 0);
    EXPECT_EQ(view.idleModes, std::vector{ProtectionMode::BlockAll});
    EXPECT_EQ(statistics.Mode().mode, ProtectionMode::BlockAll);
    Tick(2, 0);
    EXPECT_EQ(modeReadings, 1) << "traffic, and nobody sees the mode";
    view.isSeen = true;
    Tick(3, 0);
    driver.answers.erase(kControlReadTotals);
    TickAsItIs();
    EXPECT_EQ(modeReadings, 3);
    EXPECT_EQ(view.idleModes.size(), 1U) << "the driver cannot tell whether it was idle";
}

TEST_F(FiguresTest, TakesAllowAllBackThoughNobodySeesTheWindow) {
    view.isSeen = false;
    Tick(1, 0);
    {
        const auto held = rig.Hold();
        modes.Change({ProtectionMode::AllowAll, 0});
        Tick(2, 0, 2s);
    }
    EXPECT_TRUE(rig.TakeRecords().empty());
}

TEST_F(FiguresTest, CountsConnectionsEveryOtherSecondWhileTheWindowIsSeen) {
    SetConnections(3, 2);
    for (int second = 0; second < 4; ++second) Tick(0, 0);
    EXPECT_EQ(view.counts, (std::vector<std::optional<ConnectionCounts>>(2, ConnectionCounts{3, 2})));
    EXPECT_EQ(statistics.Connections(), (ConnectionCounts{3, 2})) << "ports that are listened on are none";
    view.isSeen = false;
    Tick(0, 0);
    Tick(0, 0);
    EXPECT_EQ(view.counts.size(), 2U);
    view.isSeen = true;
    driver.isPresent = false;
    TickAsItIs();
    EXPECT_EQ(view.counts.back(), std::nullopt);
}

struct Watcher final : ConnectionWatcher {
    std::vector<std::shared_ptr<const ConnectionReading>> readings;
    void OnReading(std::shared_ptr<const ConnectionReading> reading) override {
        readings.push_back(std::move(reading));
    }
};

TEST_F(FiguresTest, WhoWatchesTheTablesHasThemReadNoOftener) {
    Watcher page;
    SetConnections(3, 2);
    const auto readings = [&] { return std::ranges::count(driver.requests, kConnectionTableSize); };
    Tick(0, 0);
    tables.Watch(page);
    tables.Watch(page);
    tables.Refresh();  // opened between two ticks
    reads.RunAll();
    EXPECT_EQ(readings(), 2);
    for (int second = 0; second < 6; ++second) Tick(0, 0);
    EXPECT_EQ(readings(), 2 + 3) << "every two seconds, counted from there";
    ASSERT_EQ(page.readings.size(), 4U);
    EXPECT_EQ(page.readings.back()->tables.connections.size(), 3U);
    EXPECT_EQ(page.readings.back()->tables.listeners.size(), 2U);
    EXPECT_EQ(page.readings.back()->time, clock.elapsed);
    EXPECT_EQ(view.counts.size(), 5U) << "of every reading";
    EXPECT_EQ(view.counts.back(), (ConnectionCounts{3, 2}));
    driver.isPresent = false;
    tables.Refresh();
    reads.RunAll();
    EXPECT_EQ(page.readings.back(), nullptr);
    tables.Forget(page);
    tables.Refresh();
    reads.RunAll();
    EXPECT_EQ(page.readings.size(), 5U);
}

}  // namespace
}  // namespace brennvar
