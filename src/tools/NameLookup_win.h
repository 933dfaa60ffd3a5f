// Looks a host name up on a thread of its own, because the system's look-up cannot be cancelled.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Ipv4.h"
#include "base/StopSignal.h"

namespace brennvar {

// The first IPv4 address of the host; a dotted address is itself. 0, or Winsock's number: kErrorHostNotFound and
// its like, kErrorTimedOut after the limit, kErrorCancelled soon after the stop signal; address is then untouched.
// The socket library has to be started. A look-up that is not waited for any more ends by itself.
[[nodiscard]] std::uint32_t LookUpHost(const std::string& host, const StopSignal& stop,
                                       std::chrono::milliseconds limit, Ipv4& address);

// All of them, in the system's order, each once; at least one when 0 is returned.
[[nodiscard]] std::uint32_t LookUpAddresses(const std::string& host, const StopSignal& stop,
                                            std::chrono::milliseconds limit, std::vector<Ipv4>& addresses);

}  // namespace brennvar
