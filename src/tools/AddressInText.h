// An address in a line that a tool has printed, so that something can be asked about it.
#pragma once

#include <optional>
#include <string_view>

#include "base/Ipv4.h"

namespace brennvar {

// The first IPv4 address, as four decimal numbers with dots that stand by themselves: not part of a longer name or
// number. 0.0.0.0 counts as none, since nobody can be asked about it.
[[nodiscard]] std::optional<Ipv4> FindIpv4(std::string_view line);

}  // namespace brennvar
