// The TCP states of the IP Helper tables (MIB_TCP_STATE) as the driver's state codes.
#pragma once

#include <cstdint>

namespace brennvar::standin {

// 0 for "listen", which is no connection, and for what is unknown. The driver tells connections that were accepted
// (3) from those that were opened (4).
[[nodiscard]] std::uint32_t DriverStateOf(std::uint32_t systemState, bool accepted);

}  // namespace brennvar::standin
