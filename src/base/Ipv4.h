// IPv4 addresses and ports as the driver and the logs carry them: in network byte order.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brennvar {

// An IPv4 address in network byte order: its lowest-addressed byte is the first number of the dotted text.
using Ipv4 = std::uint32_t;

// Network order to host order and back.
[[nodiscard]] constexpr std::uint16_t SwapPort(std::uint16_t port) {
    return static_cast<std::uint16_t>((port >> 8) | (port << 8));
}
[[nodiscard]] constexpr std::uint32_t SwapAddress(std::uint32_t address) {
    return (address >> 24) | ((address >> 8) & 0xFF00U) | ((address << 8) & 0xFF0000U) | (address << 24);
}

// "a.b.c.d", at most 15 characters.
[[nodiscard]] std::string FormatIpv4(Ipv4 address);

// Appends the number in decimal.
void AppendNumber(std::string& text, std::uint32_t number);

// Four decimal numbers of 0-255 with dots between and nothing else; anything else yields nothing.
[[nodiscard]] std::optional<Ipv4> ParseIpv4(std::string_view text);

}  // namespace brennvar
