// What a connection is probably for, by its remote port.
#pragma once

#include <cstdint>
#include <span>

#include "config/Text.h"

namespace brennvar {

struct ServiceName {
    std::uint16_t remotePort;  // host order
    bool alsoUdp;              // else the row is for TCP alone
    Text text;
};

// All rows, by port.
[[nodiscard]] std::span<const ServiceName> ServiceNames();
// The row for a remote port (host order) and an IP protocol number; "Unspecified" when no row fits both.
[[nodiscard]] const ServiceName& FindServiceName(std::uint16_t remotePort, std::uint32_t protocol);

}  // namespace brennvar
