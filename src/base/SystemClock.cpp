#include "base/SystemClock.h"

#include <ctime>
#include <ratio>

namespace brennvar {

FileTime SystemClock::UtcNow() const {
    // Seconds from 1601-01-01 to 1970-01-01, where system_clock starts.
    constexpr FileTime kUnixEpochSeconds = 11'644'473'600;
    using HundredNanoseconds = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const auto ticks = std::chrono::duration_cast<HundredNanoseconds>(sinceEpoch).count();
    return kUnixEpochSeconds * kFileTimePerSecond + static_cast<FileTime>(ticks);
}

LocalDate SystemClock::Today() const {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    if (localtime_s(&local, &now) != 0) return {};
#else
    if (localtime_r(&now, &local) == nullptr) return {};
#endif
    return {.year = local.tm_year + 1900, .month = local.tm_mon + 1, .day = local.tm_mday};
}

#ifndef _WIN32  // else in SystemClock_win.cpp
std::chrono::milliseconds SystemClock::Elapsed() const {
    const auto elapsed = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(elapsed);
}
#endif

bool SystemClock::Sleep(std::chrono::milliseconds duration) {
    return m_stop.WaitFor(duration);
}

}  // namespace brennvar
