// What is known of a connection that was seen, or of one that could be: enough to ask what decides about it, and to
// make a rule for it.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "base/Clock.h"
#include "base/Ipv4.h"

namespace brennvar {

inline constexpr int kMinutesPerDay = 24 * 60;

// A moment on the clock of this machine's place.
struct LocalMoment {
    LocalDate day{};
    int minute = 0;  // of the day, 0 to 1439
    friend bool operator==(const LocalMoment&, const LocalMoment&) = default;
};

using HardwareAddress = std::array<std::uint8_t, 6>;

enum class TrafficDirection : std::uint8_t { Unknown, Incoming, Outgoing };

struct TrafficFacts {
    std::string program{};                    // full path; empty: not known
    std::string user{};                       // DOMAIN\name; empty: not known
    std::optional<std::uint32_t> protocol{};  // number of IP's, or 806 of ARP; nothing: not known
    TrafficDirection direction = TrafficDirection::Unknown;
    // 0: not known.
    Ipv4 localAddress = 0;
    Ipv4 remoteAddress = 0;
    // Host order; 0: none, or not known.
    std::uint16_t localPort = 0;
    std::uint16_t remotePort = 0;
    std::optional<HardwareAddress> localHardware{};
    std::optional<HardwareAddress> remoteHardware{};
    std::optional<LocalMoment> when{};  // nothing: now
};

}  // namespace brennvar
