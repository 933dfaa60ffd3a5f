#include "base/LocalTime_win.h"

#include <array>
#include <cstdio>

#include "base/Windows_win.h"

namespace brennvar {

std::string FormatTimeOfDay(FileTime utc, TimeOfDay precision) {
    const FILETIME moment{static_cast<DWORD>(utc), static_cast<DWORD>(utc >> 32)};
    SYSTEMTIME universal{};
    SYSTEMTIME local{};
    if (!::FileTimeToSystemTime(&moment, &universal) ||
        !::SystemTimeToTzSpecificLocalTime(nullptr, &universal, &local)) {
        return {};
    }
    std::array<char, 16> text{};
    if (precision == TimeOfDay::Minutes) {
        std::snprintf(text.data(), text.size(), "%02u:%02u", local.wHour, local.wMinute);
    } else {
        std::snprintf(text.data(), text.size(), "%02u:%02u:%02u", local.wHour, local.wMinute, local.wSecond);
    }
    return text.data();
}

LocalMoment MomentNow() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    return {.day = {now.wYear, now.wMonth, now.wDay}, .minute = now.wHour * 60 + now.wMinute};
}

}  // namespace brennvar
