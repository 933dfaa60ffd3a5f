// What the calendar says about a day that is being chosen.
#pragma once

#include <algorithm>

#include "base/Clock.h"

namespace brennvar {

// 28 to 31; month from 1.
[[nodiscard]] constexpr int DaysInMonth(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool isLeap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return kDays[month - 1] + (month == 2 && isLeap ? 1 : 0);
}

// The day, or the month's last one when it does not have that many.
[[nodiscard]] constexpr LocalDate NearestDay(LocalDate date) {
    return {.year = date.year, .month = date.month, .day = std::min(date.day, DaysInMonth(date.year, date.month))};
}

}  // namespace brennvar
