// When a message was written, by the clock of the writer's place.
#pragma once

#include <string>

#include "base/Clock.h"

namespace brennvar {

struct MailDate {
    LocalDate day;
    int hour = 0;
    int minute = 0;
    int second = 0;
    int zone = 0;  // as ZoneOffset makes it

    [[nodiscard]] static MailDate Now();  // MailDate_win.cpp
};

// Of the minutes that local time is behind UTC, as Windows counts them: hours * 100 + minutes, positive east of
// UTC. -330 makes 530.
[[nodiscard]] int ZoneOffset(int biasMinutes);

// "Mon, 9 Mar 2026 8:05:09 +0100", in English whatever the language. The sign before the number is "-" unless the
// offset is at least 1, and the number has its own: UTC is "-0000", and five hours west of it is "--0500". Mail has
// always been sent like this.
[[nodiscard]] std::string FormatMailDate(const MailDate& date);

}  // namespace brennvar
