#include "statistics/TrafficMeter.h"

#include <array>
#include <cstdio>

namespace brennvar {
namespace {

std::uint64_t Increase(std::uint64_t before, std::uint64_t now) {
    return now > before ? now - before : 0;
}

// per: what stands behind the unit.
std::string FormatAmount(double amount, const char* per) {
    constexpr double kStep = 1024;
    // The largest number that is still shown with its unit, so that it never reads "1024.0".
    constexpr double kLimit = 1023.95;
    constexpr std::array kUnits = {"KB", "MB", "GB", "TB"};
    std::array<char, 40> text{};
    if (amount < kStep - 0.5) {
        std::snprintf(text.data(), text.size(), "%.0f B%s", amount, per);
        return text.data();
    }
    amount /= kStep;
    std::size_t unit = 0;
    while (amount >= kLimit && unit + 1 < kUnits.size()) {
        amount /= kStep;
        ++unit;
    }
    std::snprintf(text.data(), text.size(), "%.1f %s%s", amount, kUnits[unit], per);
    return text.data();
}

}  // namespace

TrafficIncrease TrafficMeter::Tick(const TrafficTotals& totals) {
    const TrafficIncrease now{.bytesIn = totals.bytesIn, .bytesOut = totals.bytesOut};
    const TrafficIncrease before = m_last.value_or(now);
    m_last = now;
    return {.bytesIn = Increase(before.bytesIn, now.bytesIn), .bytesOut = Increase(before.bytesOut, now.bytesOut)};
}

std::string FormatRate(std::uint64_t bytes, std::uint64_t milliseconds) {
    return FormatAmount(
        milliseconds == 0 ? 0 : static_cast<double>(bytes) * 1000 / static_cast<double>(milliseconds), "/s");
}

std::string FormatBytes(std::uint64_t bytes) {
    return FormatAmount(static_cast<double>(bytes), "");
}

}  // namespace brennvar
