// Hours of ticks in fast motion, and a log that grows: the program must hold no more of the system's objects and
// memory afterwards.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "Product.h"
#include "logs/LogRecords.h"
#include "support/ObjectCounts_win.h"
// windows.h must stand before this.
#include <psapi.h>

namespace brennvar::test {
namespace {

// Timers of the control center: once a second, and ten times.
constexpr WPARAM kSlowTimers[] = {1, 2, 3, 5};
constexpr WPARAM kFastTimers[] = {4, 6};
constexpr int kFastTicks = 10;

// What the tests play by default; scripts/soak.sh plays eight hours.
constexpr int kDefaultSeconds = 80;
// Caches fill, the balloon is made, the heap and the graphs reach their size; twice, as the way back from the tray
// is part of it.
constexpr int kWarmUpRounds = 2;
constexpr int kWarmUpSeconds = 80;
// What is made once at some time, such as the system's lock when two threads first meet at one, and what is there
// for a moment, such as the tools of a picture that is being painted. A leak is one for each tick, or notice.
constexpr int kObjectTolerance = 4;
constexpr std::size_t kMemoryTolerance = std::size_t{1024} * 1024;
// Played seconds for each notice, so that some come in each stage of the warm-up.
constexpr int kNoticePeriod = 10;

class SoakTest : public ProductFixture {
protected:
    void PlayTick(WPARAM timer) const { Require(Ask(m_window, WM_TIMER, timer) != kNoAnswer); }
    // Every page for an eighth of the time, and the tray for a quarter.
    void PlaySeconds(int seconds) const {
        const int stage = seconds / 8;
        for (const int page : kPages) {
            Ask(m_window, WM_COMMAND, static_cast<WPARAM>(page));
            Require(::IsWindowVisible(m_window) != FALSE);
            PlayStage(stage);
        }
        Ask(m_window, WM_CLOSE);
        Require(::IsWindowVisible(m_window) == FALSE);
        PlayStage(2 * stage);
    }
    void PlayStage(int seconds) const {
        for (int second = 0; second < seconds; ++second) {
            for (const WPARAM timer : kSlowTimers) PlayTick(timer);
            for (int tick = 0; tick < kFastTicks; ++tick) {
                for (const WPARAM timer : kFastTimers) PlayTick(timer);
            }
        }
    }
    [[nodiscard]] static int SecondsToPlay() {
        const char* given = std::getenv("BRENNVAR_SOAK_SECONDS");
        return given ? std::atoi(given) : kDefaultSeconds;
    }
    [[nodiscard]] std::size_t Memory() const {
        PROCESS_MEMORY_COUNTERS counters{};
        return ::GetProcessMemoryInfo(m_interface->Process(), &counters, sizeof(counters)) ? counters.PagefileUsage
                                                                                           : 0;
    }
    [[nodiscard]] ObjectCounts Counts() const { return CountObjects(m_interface->Process(), m_interface->Id()); }
    // It comes down to the limit. A picture that is being painted takes megabytes for a moment.
    [[nodiscard]] std::size_t ExpectMemory(std::size_t limit) const {
        std::size_t now = 0;
        EXPECT_TRUE(WaitUntil([&] { return (now = Memory()) <= limit; })) << now << " instead of " << limit;
        return now;
    }
    // There are no more than before. What is under way when the last tick has been played still holds a few.
    [[nodiscard]] ObjectCounts ExpectNoMoreThan(const ObjectCounts& before) const {
        ObjectCounts after;
        EXPECT_TRUE(WaitUntil([&] {
            after = Counts();
            return after.gdi <= before.gdi + kObjectTolerance &&
                   after.windows <= before.windows + kObjectTolerance &&
                   after.handles <= before.handles + kObjectTolerance;
        })) << after
            << " instead of " << before;
        return after;
    }
};

// Appends as the service does, that many events.
void AppendEvents(const std::string& path, int count) {
    TrafficLogRecord record{};
    record.action = 1;
    record.protocol = 6;
    record.kind = 1;
    const std::vector<TrafficLogRecord> records(static_cast<std::size_t>(count), record);
    std::ofstream(path, std::ios::binary | std::ios::app)
        .write(reinterpret_cast<const char*>(records.data()),
               static_cast<std::streamsize>(records.size() * sizeof record));
}

TEST_F(SoakTest, HoursOfTicksAndALogThatGrowsLeaveNothingBehind) {
    const int seconds = SecondsToPlay();
    Lines scenario = {"log-many 1000", "totals 0 0", "rate 40000 9000", "connections 50"};
    for (int notice = 0; notice < (kWarmUpRounds * kWarmUpSeconds + seconds) / kNoticePeriod; ++notice) {
        scenario.push_back("notice ATTACK");
        scenario.push_back("notice Notice " + std::to_string(notice) + " | https://www.example.com");
    }
    Start(scenario);
    for (int round = 0; round < kWarmUpRounds; ++round) PlaySeconds(kWarmUpSeconds);
    ObjectCounts before = Counts();
    std::size_t memoryBefore = Memory();
    ASSERT_GT(before.gdi, 0);
    ASSERT_GT(before.handles, 0);
    ASSERT_GT(memoryBefore, 0U);
    PlaySeconds(seconds);
    const ObjectCounts after = ExpectNoMoreThan(before);
    std::size_t memoryAfter = ExpectMemory(memoryBefore + kMemoryTolerance);
    std::printf("%d seconds played: %d GDI objects, %d windows, %d handles, %zu KB; before %d, %d, %d, %zu KB\n",
                seconds, after.gdi, after.windows, after.handles, memoryAfter / 1024, before.gdi, before.windows,
                before.handles, memoryBefore / 1024);

    // A log that grows while it is shown takes no more than its rows. The page looks at it once a second, so a
    // round is a second, and soak.sh plays a quarter of an hour.
    constexpr int kPerRound = 2000, kTickSecondsPerRound = 30, kWarmUp = 2;
    const int rounds = seconds / kTickSecondsPerRound;
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    char day[16];
    (void)std::snprintf(day, sizeof day, "%04d%02d%02d", now.wYear, now.wMonth, now.wDay);
    const std::string log = m_data + "\\Log\\" + day + ".log";
    ::ShowWindow(m_window, SW_SHOW);
    Ask(m_window, WM_COMMAND, 463);
    const HWND list = List();
    int rows = 1000;
    const auto play = [&](int times) {
        for (int round = 0; round < times; ++round) {
            AppendEvents(log, kPerRound);
            rows += kPerRound;
            Require(WaitUntil([&] { return ListRowCount(list) == rows; }));
        }
    };
    Require(WaitUntil([&] { return ListRowCount(list) == rows; }));
    play(kWarmUp);
    before = Counts();
    memoryBefore = Memory();
    play(rounds);
    (void)ExpectNoMoreThan(before);
    constexpr std::size_t kRowSize = 16;
    memoryAfter =
        ExpectMemory(memoryBefore + kMemoryTolerance + kRowSize * static_cast<std::size_t>(rounds) * kPerRound);
    std::printf("%d seconds played: %d events appended, %zu KB; before %zu KB\n", rounds, rounds * kPerRound,
                memoryAfter / 1024, memoryBefore / 1024);
}

}  // namespace
}  // namespace brennvar::test
