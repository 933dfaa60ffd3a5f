#include "base/Calendar.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(CalendarTest, KnowsItsDays) {
    // Leap years: every fourth, but not the full centuries, except every fourth of these.
    for (const LocalDate& day : {LocalDate{1, 1, 1}, LocalDate{2026, 12, 31}, LocalDate{2026, 4, 30},
                                 LocalDate{2026, 2, 28}, LocalDate{2028, 2, 29}, LocalDate{2000, 2, 29}}) {
        EXPECT_TRUE(IsOfCalendar(day)) << day.year << ' ' << day.month << ' ' << day.day;
    }
    for (const LocalDate& day :
         {LocalDate{0, 1, 1}, LocalDate{2026, 0, 1}, LocalDate{2026, 13, 1}, LocalDate{2026, 1, 0},
          LocalDate{2026, 4, 31}, LocalDate{2026, 2, 29}, LocalDate{2028, 2, 30}, LocalDate{2100, 2, 29}}) {
        EXPECT_FALSE(IsOfCalendar(day)) << day.year << ' ' << day.month << ' ' << day.day;
    }
}

}  // namespace
}  // namespace brennvar
