#include "base/ClockCheck.h"

#include <gtest/gtest.h>

#include <ctime>

#include "base/NetworkSignature.h"
#include "base/SystemClock.h"

namespace brennvar {

using Jump = ClockCheck::Jump;
constexpr FileTime kStart = 132'000'000'000'000'000;
constexpr FileTime kSecond = 10'000'000;

TEST(ClockCheckTest, TellsJumpsFromNormalRunning) {
    struct Row {
        FileTime next;
        Jump expected;
    };
    const Row rows[] = {{kStart, Jump::None},
                        {kStart + 20 * kSecond, Jump::None},  // exactly the longest step
                        {kStart + 20 * kSecond + 1, Jump::Future},
                        {kStart - 1, Jump::Past},
                        {0, Jump::Past},
                        {~FileTime{0}, Jump::Future}};
    for (const Row& row : rows) EXPECT_EQ(ClockCheck(kStart).Tick(row.next), row.expected) << row.next;
    // No overflow at the end of time.
    EXPECT_EQ(ClockCheck(~FileTime{0} - 5).Tick(~FileTime{0}), Jump::None);
}

TEST(ClockCheckTest, ReportsEachJumpOnceAndSkipsOneComparisonOnRequest) {
    ClockCheck check(kStart);
    EXPECT_EQ(check.Tick(kStart - 3600 * kSecond), Jump::Past);
    EXPECT_EQ(check.Tick(kStart - 3599 * kSecond), Jump::None);
    check.SkipNext();
    EXPECT_EQ(check.Tick(kStart), Jump::None);
    EXPECT_EQ(check.Tick(kStart + kSecond), Jump::None);
    EXPECT_EQ(check.Tick(kStart), Jump::Past);
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
