// What the service's files know about an address or a program. They are opened for reading only, never waited for
// and never created; a missing file yields nothing. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Clock.h"
#include "base/Ipv4.h"

namespace brennvar {

// The domain name that this address was resolved from last on the given day; empty when there is none.
[[nodiscard]] std::string FindHostName(const std::string& dataFolder, LocalDate day, Ipv4 address);

// "0a-1b-2c-3d-4e-5f", as seen for this address on the given day; empty when there is none.
[[nodiscard]] std::string FindHardwareAddress(const std::string& dataFolder, LocalDate day, Ipv4 address);

// 0: deny, 1: allow; any other number advises nothing. The first entry for the path counts; compared without
// regard to the case of ASCII letters.
[[nodiscard]] std::optional<std::uint32_t> FindAdvice(const std::string& dataFolder, std::string_view path);

}  // namespace brennvar
