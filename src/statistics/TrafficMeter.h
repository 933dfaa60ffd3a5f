// From the driver's running totals to what flowed since the last look.
#pragma once

#include <cstdint>
#include <optional>

#include "ipc/DriverRecords.h"

namespace brennvar {

struct TrafficIncrease {
    std::uint64_t bytesIn = 0;
    std::uint64_t bytesOut = 0;
    friend bool operator==(const TrafficIncrease&, const TrafficIncrease&) = default;
};

class TrafficMeter {
public:
    // Zero at the first call, and zero for a counter that went back (the driver was loaded anew).
    TrafficIncrease Tick(const TrafficTotals& totals);

private:
    std::optional<TrafficIncrease> m_last;  // the totals of the last call
};

}  // namespace brennvar
