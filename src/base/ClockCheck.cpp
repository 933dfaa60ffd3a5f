#include "base/ClockCheck.h"

#include <cstdint>
#include <utility>

namespace brennvar {
namespace {

constexpr std::int64_t kUnitsPerMs = kFileTimePerSecond / 1000;
// A clock that is set ahead by less is put right by a time service, and no rule with hours notices.
constexpr std::int64_t kFarthestAhead = 20 * static_cast<std::int64_t>(kFileTimePerSecond);
// Both counters move by 16 ms at a time on some machines, and the two are read one after the other.
constexpr std::int64_t kFarthestBehind = kFileTimePerSecond / 2;
// After a long sleep they have been put right from different clocks, of which each goes wrong by some seconds a
// day: a thousandth of the time is forgiven.
constexpr std::int64_t kDriftShare = 1000;

}  // namespace

ClockCheck::Jump ClockCheck::Tick(FileTime now, std::chrono::milliseconds elapsed) {
    // The system's time stays below 2^63 until the year 30,828.
    const auto step = static_cast<std::int64_t>(now - std::exchange(m_lastSeen, now));
    const std::int64_t passed = (elapsed - std::exchange(m_lastElapsed, elapsed)).count() * kUnitsPerMs;
    const std::int64_t ahead = step - passed;
    const std::int64_t drift = passed / kDriftShare;
    if (step < 0 || ahead <= -kFarthestBehind - drift) return Jump::Past;
    return ahead > kFarthestAhead + drift ? Jump::Future : Jump::None;
}

}  // namespace brennvar
