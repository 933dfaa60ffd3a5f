// Entries of the driver's tables, written as tests read best.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "ipc/DriverTables.h"

namespace brennvar::test {

struct EntryFacts {
    std::uint32_t state = 4;
    std::string_view local = "10.0.0.1";
    std::uint16_t localPort = 50000;
    std::string_view remote = "93.184.216.34";
    std::uint16_t remotePort = 443;
    std::uint32_t processId = 1;
    std::uint32_t in = 0;
    std::uint32_t out = 0;
};
[[nodiscard]] inline ConnectionEntry Connection(const EntryFacts& facts) {
    return {facts.state,
            ParseIpv4(facts.local).value(),
            SwapPort(facts.localPort),
            ParseIpv4(facts.remote).value(),
            SwapPort(facts.remotePort),
            facts.processId,
            facts.in,
            facts.out};
}
[[nodiscard]] inline ListenerEntry Listener(std::uint32_t protocol, std::uint16_t port = 53,
                                            std::uint32_t processId = 2, std::string_view local = "0.0.0.0") {
    return {protocol, ParseIpv4(local).value(), SwapPort(port), processId};
}

}  // namespace brennvar::test
