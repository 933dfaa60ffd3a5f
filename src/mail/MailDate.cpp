#include "mail/MailDate.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace brennvar {

int ZoneOffset(int biasMinutes) {
    constexpr int kMinutesPerHour = 60;
    return -(biasMinutes / kMinutesPerHour * 100 + biasMinutes % kMinutesPerHour);
}

std::string FormatMailDate(const MailDate& date) {
    constexpr std::array kDays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    constexpr std::array kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                    "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    using namespace std::chrono;
    const year_month_day day{year(date.day.year), month(static_cast<unsigned>(date.day.month)),
                             std::chrono::day(static_cast<unsigned>(date.day.day))};
    if (!day.ok()) return {};
    std::array<char, 96> text{};
    (void)std::snprintf(text.data(), text.size(), "%s, %d %s %04d %d:%02d:%02d %c%4.4d",
                        kDays[weekday(sys_days(day)).c_encoding()], date.day.day,
                        kMonths[static_cast<std::size_t>(date.day.month) - 1], date.day.year, date.hour,
                        date.minute, date.second, date.zone < 1 ? '-' : '+', date.zone);
    return text.data();
}

}  // namespace brennvar
