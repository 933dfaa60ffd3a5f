// Which of the six notification icons is shown.
#pragma once

#include <cstdint>

#include "commands/ProtectionMode.h"
#include "statistics/TrafficMeter.h"

namespace brennvar {

enum class TrayIconState : std::uint8_t {
    IdleNormal,
    IdleAllowAll,
    IdleBlockAll,
    TrafficIn,
    TrafficOut,
    TrafficInAndOut,
    Count,
};

// Traffic since the last tick comes before the mode.
[[nodiscard]] TrayIconState ChooseTrayIcon(const TrafficIncrease& increase, ProtectionMode mode);

}  // namespace brennvar
