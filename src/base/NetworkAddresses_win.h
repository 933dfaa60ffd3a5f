// The machine's own IPv4 addresses, from IP Helper. Any thread; none of these calls goes to the network.
#pragma once

#include <vector>

#include "base/Ipv4.h"
#include "base/NetworkSignature.h"

namespace brennvar {

// Every row of the address table with the status of its interface; empty when the table cannot be read.
[[nodiscard]] std::vector<InterfaceAddress> ReadInterfaceAddresses();

// The address that the system would send from towards a destination; 0 when it has no route or no address there.
[[nodiscard]] Ipv4 FindLocalAddressFor(Ipv4 destination);

}  // namespace brennvar
