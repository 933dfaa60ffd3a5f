// From the driver's running totals to what flowed since the last look.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

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

// Bytes in so many milliseconds as "512 B/s", "1.5 KB/s", "20.0 MB/s"; 1 KB is 1024 bytes.
[[nodiscard]] std::string FormatRate(std::uint64_t bytes, std::uint64_t milliseconds);
// The same without a time: "512 B", "1.5 KB".
[[nodiscard]] std::string FormatBytes(std::uint64_t bytes);

}  // namespace brennvar
