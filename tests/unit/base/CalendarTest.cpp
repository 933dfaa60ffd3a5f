#include "base/Calendar.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(CalendarTest, KeepsTheDayInsideItsMonth) {
    EXPECT_EQ(NearestDay({.year = 2026, .month = 12, .day = 31}), (LocalDate{2026, 12, 31}));
    EXPECT_EQ(NearestDay({.year = 2026, .month = 4, .day = 31}), (LocalDate{2026, 4, 30}));
    // Leap years: every fourth, but not the full centuries, except every fourth of these.
    EXPECT_EQ(NearestDay({.year = 2026, .month = 2, .day = 31}), (LocalDate{2026, 2, 28}));
    EXPECT_EQ(NearestDay({.year = 2028, .month = 2, .day = 31}), (LocalDate{2028, 2, 29}));
    EXPECT_EQ(NearestDay({.year = 2100, .month = 2, .day = 31}), (LocalDate{2100, 2, 28}));
    EXPECT_EQ(NearestDay({.year = 2000, .month = 2, .day = 31}), (LocalDate{2000, 2, 29}));
}

}  // namespace
}  // namespace brennvar
