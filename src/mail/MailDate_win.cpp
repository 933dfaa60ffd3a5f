#include "base/Windows_win.h"
#include "mail/MailDate.h"

namespace brennvar {

MailDate MailDate::Now() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    TIME_ZONE_INFORMATION zone{};
    const DWORD season = ::GetTimeZoneInformation(&zone);
    LONG bias = 0;  // unknown counts as UTC
    if (season != TIME_ZONE_ID_INVALID) {
        // A zone without summer time has no season; its standard bias is zero then.
        bias = zone.Bias + (season == TIME_ZONE_ID_DAYLIGHT ? zone.DaylightBias : zone.StandardBias);
    }
    return {.day = {.year = now.wYear, .month = now.wMonth, .day = now.wDay},
            .hour = now.wHour,
            .minute = now.wMinute,
            .second = now.wSecond,
            .zone = ZoneOffset(static_cast<int>(bias))};
}

}  // namespace brennvar
