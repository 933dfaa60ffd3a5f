// What the calendar says about days.
#pragma once

#include "base/Clock.h"

namespace brennvar {

// Whether there is such a day; years from 1.
[[nodiscard]] constexpr bool IsOfCalendar(const LocalDate& date) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (date.year < 1 || date.month < 1 || date.month > 12 || date.day < 1) return false;
    const bool isLeap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
    return date.day <= kDays[date.month - 1] + (date.month == 2 && isLeap ? 1 : 0);
}

}  // namespace brennvar
