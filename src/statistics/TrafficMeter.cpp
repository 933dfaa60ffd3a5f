#include "statistics/TrafficMeter.h"

#include <algorithm>

namespace brennvar {
namespace {

// A counter that is less than before has started over at 2^32 when no more than this has flowed meanwhile, which a
// gigabit line carries; else the connection is another one.
constexpr std::uint64_t kMostBytesPerSecond = 125'000'000;

std::uint64_t Increase(std::uint64_t before, std::uint64_t now) {
    return now > before ? now - before : 0;
}

}  // namespace

std::optional<std::uint32_t> CounterGrowth(std::uint32_t before, std::uint32_t now,
                                           std::chrono::milliseconds elapsed) {
    const std::uint32_t grown = now - before;
    const auto time = static_cast<std::uint64_t>(std::max<std::chrono::milliseconds::rep>(elapsed.count(), 0));
    if (now < before && grown > kMostBytesPerSecond * time / 1000) return std::nullopt;
    return grown;
}

TrafficIncrease TrafficMeter::Tick(const TrafficTotals& totals) {
    const TrafficIncrease now{.bytesIn = totals.bytesIn, .bytesOut = totals.bytesOut};
    const TrafficIncrease before = m_last.value_or(now);
    m_last = now;
    return {.bytesIn = Increase(before.bytesIn, now.bytesIn), .bytesOut = Increase(before.bytesOut, now.bytesOut)};
}

}  // namespace brennvar
