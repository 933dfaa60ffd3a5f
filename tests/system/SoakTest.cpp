// Hours of ticks in fast motion: the program must hold no more of the system's objects and memory afterwards.
#include <gtest/gtest.h>

#include <cstdlib>

#include "Product.h"
#include "support/ObjectCounts_win.h"
// windows.h must stand before this.
#include <psapi.h>

namespace brennvar::test {
namespace {

using namespace std::chrono_literals;

// Timers of the control center: once a second, and ten times.
constexpr WPARAM kSlowTimers[] = {1, 2, 3, 5};
constexpr WPARAM kFastTimers[] = {4, 6};
constexpr int kFastTicks = 10;

// What the tests play by default; scripts/soak.sh plays eight hours.
constexpr int kDefaultSeconds = 600;
// Caches fill, the heap and the graphs reach their size.
constexpr int kWarmUpSeconds = 120;
constexpr std::size_t kMemoryTolerance = 1024 * 1024;

class SoakTest : public ProductFixture {
protected:
    void PlayTick(WPARAM timer) const { ASSERT_NE(Ask(m_window, WM_TIMER, timer), kNoAnswer); }
    void PlaySecond() const {
        for (const WPARAM timer : kSlowTimers) PlayTick(timer);
        for (int tick = 0; tick < kFastTicks; ++tick) {
            for (const WPARAM timer : kFastTimers) PlayTick(timer);
        }
    }
    // Every page for an eighth of the time, and the tray for a quarter.
    void PlaySeconds(int seconds) const {
        constexpr int kStages = 8;
        for (int second = 0; second < seconds; ++second) {
            const int stage = second * kStages / seconds;
            if (second == 0 || stage != (second - 1) * kStages / seconds) {
                if (stage < 6) {
                    Ask(m_window, WM_COMMAND, static_cast<WPARAM>(kPages[stage]));
                } else if (stage == 6) {
                    Ask(m_window, WM_CLOSE);
                }
            }
            PlaySecond();
        }
    }
    [[nodiscard]] std::size_t Memory() const {
        PROCESS_MEMORY_COUNTERS counters{};
        return ::GetProcessMemoryInfo(m_interface->Process(), &counters, sizeof(counters)) ? counters.PagefileUsage
                                                                                           : 0;
    }
    [[nodiscard]] ObjectCounts Counts() const { return CountObjects(m_interface->Process(), m_interface->Id()); }
};

TEST_F(SoakTest, HoursOfTicksLeaveNothingBehind) {
    const char* given = std::getenv("BRENNVAR_SOAK_SECONDS");
    const int seconds = given ? std::atoi(given) : kDefaultSeconds;
    std::vector<std::string> scenario = {"totals 0 0", "rate 40000 9000", "connections 50"};
    scenario.insert(scenario.end(), 40, "notice ATTACK");
    ASSERT_NO_FATAL_FAILURE(Start(scenario));

    ASSERT_NO_FATAL_FAILURE(PlaySeconds(kWarmUpSeconds));
    const ObjectCounts before = Counts();
    const std::size_t memoryBefore = Memory();
    ASSERT_GT(before.gdi, 0);
    ASSERT_GT(before.handles, 0);
    ASSERT_GT(memoryBefore, 0U);

    ASSERT_NO_FATAL_FAILURE(PlaySeconds(seconds));
    // What is under way when the last tick has been played still holds a handle or two.
    EXPECT_TRUE(WaitUntil([&] { return Counts() == before; })) << Counts() << " instead of " << before;
    const std::size_t memoryAfter = Memory();
    EXPECT_LE(memoryAfter, memoryBefore + kMemoryTolerance);
    std::printf("%d seconds played: %d GDI objects, %d windows, %d handles, memory %zu KB, before %zu KB\n",
                seconds, before.gdi, before.windows, before.handles, memoryAfter / 1024, memoryBefore / 1024);
}

}  // namespace
}  // namespace brennvar::test
