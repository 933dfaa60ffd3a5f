#include "base/ClockCheck.h"

#include <gtest/gtest.h>

#include <ctime>

#include "base/NetworkSignature.h"
#include "base/SystemClock.h"

namespace brennvar {

using Jump = ClockCheck::Jump;
constexpr FileTime kStart = 132'000'000'000'000'000;
constexpr FileTime kSecond = 10'000'000;

TEST(ClockCheckTest, HoldsEveryStepAgainstTheTimeThatHasPassed) {
    using namespace std::chrono_literals;
    struct Row {
        std::int64_t step;  // of the system's clock
        std::chrono::milliseconds passed;
        Jump expected;
    };
    constexpr auto kSeconds = static_cast<std::int64_t>(kSecond);
    constexpr std::int64_t kHour = 3600 * kSeconds;
    const Row rows[] = {{kSeconds, 1s, Jump::None},
                        {21 * kSeconds, 1s, Jump::None},  // ahead by less than the goal of a time service
                        {21 * kSeconds + 10'001, 1s, Jump::Future},  // by more, and more than the two may drift
                        {0, 1s, Jump::Past},                         // back by a second, between two ticks
                        {kSeconds / 2, 1s, Jump::None},
                        {kSeconds / 2 - 10'000, 1s, Jump::Past},
                        {-1, 0s, Jump::Past},
                        {-1, 1s, Jump::Past},
                        {60 * kSeconds, 60s, Jump::None},             // the thread was busy
                        {8 * kHour, 8h, Jump::None},                  // the machine slept
                        {8 * kHour + 20 * kSeconds, 8h, Jump::None},  // and its clocks do not agree
                        {9 * kHour, 8h, Jump::Future},                // set ahead while it slept
                        {7 * kHour, 8h, Jump::Past},
                        {-kHour, 8h, Jump::Past}};
    for (const Row& row : rows) {
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
    // Whole seconds, of a clock that may be a tick behind.
    EXPECT_GE(now, kUnixEpoch + static_cast<FileTime>(before) * kSecond);
    EXPECT_LE(now, kUnixEpoch + static_cast<FileTime>(std::time(nullptr) + 2) * kSecond);
    // The day may end between the two looks.
    const std::time_t after = std::time(nullptr);
    const auto isDayOf = [&](std::time_t time) {
        const std::tm local = *std::localtime(&time);
        return today == LocalDate{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
    };
    EXPECT_TRUE(isDayOf(before) || isDayOf(after));
}

TEST(NetworkSignatureTest, ChangesWithTheAddressesOfInterfacesThatWork) {
    const InterfaceAddress addresses[] = {{10, kInterfaceOperational}, {7, 0}, {0xFFFFFFFF, kInterfaceOperational}};
    EXPECT_EQ(NetworkSignature(addresses), 9U);
    EXPECT_EQ(NetworkSignature({}), 0U);
}

}  // namespace brennvar
