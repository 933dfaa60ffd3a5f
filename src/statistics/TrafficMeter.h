// From the driver's running totals to what flowed since the last look.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "ipc/DriverRecords.h"

namespace brennvar {

struct TrafficIncrease {
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;
    friend bool operator==(const TrafficIncrease&, const TrafficIncrease&) = default;
};

// What has flowed between two readings of a counter that starts over at 2^32, so much later. Nothing: it has begun
// anew, for another connection.
[[nodiscard]] std::optional<std::uint32_t> CounterGrowth(std::uint32_t before, std::uint32_t now,
                                                         std::chrono::milliseconds elapsed);

class TrafficMeter {
public:
    // Zero at the first call, and zero for a counter that went back (the driver was loaded anew).
    TrafficIncrease Tick(const TrafficTotals& totals);

private:
    std::optional<TrafficIncrease> m_last;  // the totals of the last call
};

}  // namespace brennvar
