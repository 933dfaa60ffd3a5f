// Ports with what they are for.
#pragma once

#include <cstdint>
#include <string>

#include "logs/HeaderLines.h"

namespace brennvar {

// "443 (HTTPS - Secure web connection)"; the port alone where its service is not known. Host order.
[[nodiscard]] std::string PortText(std::uint16_t port, std::uint32_t protocol, const Language& language);
// The two ports that a TCP or UDP header begins with.
void AddPorts(HeaderLines& lines, std::uint32_t protocol);

}  // namespace brennvar
