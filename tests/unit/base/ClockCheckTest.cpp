#include "base/ClockCheck.h"

#include <gtest/gtest.h>

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

}  // namespace brennvar
