// A number that changes when the machine joins or leaves a network.
#pragma once

#include <cstdint>
#include <span>

#include "base/Ipv4.h"

namespace brennvar {

// IP Helper's operational status of an interface that carries traffic.
inline constexpr std::uint32_t kInterfaceOperational = 5;

struct InterfaceAddress {
    Ipv4 address = 0;
    std::uint32_t operationalStatus = 0;  // of the interface that has the address; 0 when it cannot be read
    friend bool operator==(const InterfaceAddress&, const InterfaceAddress&) = default;
};

// The sum, modulo 2^32, of the addresses whose interface is operational; 0 for none.
[[nodiscard]] std::uint32_t NetworkSignature(std::span<const InterfaceAddress> addresses);

}  // namespace brennvar
