#include "statistics/TrafficMeter.h"

namespace brennvar {
namespace {

std::uint64_t Increase(std::uint64_t before, std::uint64_t now) {
    return now > before ? now - before : 0;
}

}  // namespace

TrafficIncrease TrafficMeter::Tick(const TrafficTotals& totals) {
    const TrafficIncrease now{.bytesIn = totals.bytesIn, .bytesOut = totals.bytesOut};
    const TrafficIncrease before = m_last.value_or(now);
    m_last = now;
    return {.bytesIn = Increase(before.bytesIn, now.bytesIn), .bytesOut = Increase(before.bytesOut, now.bytesOut)};
}

}  // namespace brennvar
