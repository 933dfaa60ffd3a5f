#include "statistics/RecentTraffic.h"

#include <algorithm>

namespace brennvar {
namespace {

// In floating point: a confused driver may tell of so many bytes that a thousand times as many overflow.
double RateOf(double bytes, double milliseconds) {
    return bytes * 1000 / milliseconds;
}

// Above 2^53 whole numbers are no longer exact, and at 2^64 no longer there.
std::uint64_t Whole(double rate) {
    constexpr double kMost = 9.0e18;
    return static_cast<std::uint64_t>(std::min(rate, kMost));
}

}  // namespace

void RecentTraffic::Add(std::uint64_t bytes, std::uint64_t milliseconds) {
    if (milliseconds == 0) return;
    if (m_ticks.size() == kMostTicks) m_ticks.pop_front();
    m_ticks.push_back({bytes, milliseconds});
}

RecentTraffic::Rates RecentTraffic::OfLast(std::size_t ticks) const {
    const std::size_t count = std::min(ticks, m_ticks.size());
    if (count == 0) return {};
    double peak = 0;
    double bytes = 0;
    double milliseconds = 0;
    for (auto tick = m_ticks.end() - static_cast<std::ptrdiff_t>(count); tick != m_ticks.end(); ++tick) {
        const auto bytesOfTick = static_cast<double>(tick->bytes);
        const auto timeOfTick = static_cast<double>(tick->milliseconds);
        peak = std::max(peak, RateOf(bytesOfTick, timeOfTick));
        bytes += bytesOfTick;
        milliseconds += timeOfTick;
    }
    return {.peak = Whole(peak), .average = Whole(RateOf(bytes, milliseconds))};
}

}  // namespace brennvar
