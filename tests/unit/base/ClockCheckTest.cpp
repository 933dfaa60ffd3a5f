// Time as the program counts it, and what it makes of jumps.
#include "base/ClockCheck.h"

#include <gtest/gtest.h>

#include <ctime>

#include "base/Calendar.h"
#include "base/NetworkSignature.h"
#include "base/SystemClock.h"

namespace brennvar {

using Jump = ClockCheck::Jump;
constexpr FileTime kStart = 132'000'000'000'000'000;
constexpr FileTime kSecond = 10'000'000;

TEST(ClockCheckTest, HoldsEveryStepAgainstTheTimeThatHasPassed) {
    using namespace std::chrono_literals;
    constexpr auto kSeconds = static_cast<std::int64_t>(kSecond);
    constexpr std::int64_t kHour = 3600 * kSeconds;
    const struct {
        std::int64_t step;  // of the system's clock
        std::chrono::milliseconds passed;
        Jump expected;
    } rows[] = {{21 * kSeconds, 1s, Jump::None},             // ahead by less than the goal of a time service
                {21 * kSeconds + 10'001, 1s, Jump::Future},  // by more, and more than the two may drift
                {0, 1s, Jump::Past},                         // back by a second, between two ticks
                {kSeconds / 2, 1s, Jump::None},
                {kSeconds / 2 - 10'000, 1s, Jump::Past},
                {-1, 0s, Jump::Past},
                {8 * kHour + 20 * kSeconds, 8h, Jump::None},  // the machine slept, and its clocks do not agree
                {9 * kHour, 8h, Jump::Future},                // set ahead while it slept
                {7 * kHour, 8h, Jump::Past}};
    for (const auto& row : rows) {
        ClockCheck check(kStart, 1s);
        const auto now = static_cast<FileTime>(static_cast<std::int64_t>(kStart) + row.step);
        EXPECT_EQ(check.Tick(now, 1s + row.passed), row.expected) << row.step << " " << row.passed.count();
        EXPECT_EQ(check.Tick(now + kSecond, 2s + row.passed), Jump::None) << "each jump is told once";
    }
}

TEST(SystemClockTest, CountsFrom1601AndKnowsTheLocalDay) {
    const StopSignal stop;
    const SystemClock clock(stop);
    constexpr FileTime kUnixEpoch = 116'444'736'000'000'000;  // 1970-01-01
    const std::time_t before = std::time(nullptr);
    const LocalDate today = clock.Today();
    const FileTime now = clock.UtcNow();
    const std::time_t after = std::time(nullptr);
    // Whole seconds, of a clock that may be a tick behind.
    EXPECT_GE(now, kUnixEpoch + static_cast<FileTime>(before) * kSecond);
    EXPECT_LE(now, kUnixEpoch + static_cast<FileTime>(after + 2) * kSecond);
    // The day may end between the two looks.
    const std::tm first = *std::localtime(&before), last = *std::localtime(&after);
    EXPECT_TRUE((today == LocalDate{first.tm_year + 1900, first.tm_mon + 1, first.tm_mday}) ||
                (today == LocalDate{last.tm_year + 1900, last.tm_mon + 1, last.tm_mday}));
}

TEST(CalendarTest, KnowsItsDays) {
    // Leap years: every fourth, but not the full centuries, except every fourth of these.
    const std::pair<LocalDate, bool> rows[] = {
        {{1, 1, 1}, true},     {{2026, 12, 31}, true}, {{2026, 4, 30}, true},  {{2028, 2, 29}, true},
        {{2000, 2, 29}, true}, {{0, 1, 1}, false},     {{2026, 0, 1}, false},  {{2026, 13, 1}, false},
        {{2026, 1, 0}, false}, {{2026, 4, 31}, false}, {{2026, 2, 29}, false}, {{2028, 2, 30}, false},
        {{2100, 2, 29}, false}};
    for (const auto& [day, isThere] : rows) EXPECT_EQ(IsOfCalendar(day), isThere) << day.year << ' ' << day.month;
}

TEST(NetworkSignatureTest, ChangesWithTheAddressesOfInterfacesThatWork) {
    const InterfaceAddress addresses[] = {{10, kInterfaceOperational}, {7, 0}, {0xFFFFFFFF, kInterfaceOperational}};
    EXPECT_EQ(NetworkSignature(addresses), 9U);
}

}  // namespace brennvar
