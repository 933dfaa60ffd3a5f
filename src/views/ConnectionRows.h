// The rows of the Connections page, made from the driver's tables.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Ipv4.h"
#include "ipc/DriverTables.h"

namespace brennvar {

// Numbers of a row's state. 0 to 10 come from the driver, 11 and up are listeners.
inline constexpr std::uint32_t kStateUnknown = 0;
inline constexpr std::uint32_t kStateSynReceived = 2;
inline constexpr std::uint32_t kStateEstablishedIn = 3;
inline constexpr std::uint32_t kStateEstablishedOut = 4;
inline constexpr std::uint32_t kStateListenTcp = 11;
inline constexpr std::uint32_t kStateListenUdp = 12;
inline constexpr std::uint32_t kStateListenIp = 13;
inline constexpr std::uint32_t kStateListenOther = 14;

struct ConnectionRow {
    std::string address;      // "a.b.c.d:port -> a.b.c.d:port", "<-" when incoming; listeners: local side only
    std::string name;         // file name part of the path
    std::string path;         // lower case; the text for "no process" stands in both when there is none
    std::uint32_t state = 0;  // 0 to 14
    bool outgoing = false;    // every connection but states 2 and 3; never a listener
    std::uint32_t processId = 0;
    Ipv4 localAddress = 0;
    std::uint16_t localPort = 0;   // host order
    Ipv4 remoteAddress = 0;        // listeners: 0.0.0.0, port 0
    std::uint16_t remotePort = 0;  // host order
    std::uint32_t bytesIn = 0;     // of this connection; listeners: 0
    std::uint32_t bytesOut = 0;

    friend bool operator==(const ConnectionRow&, const ConnectionRow&) = default;
};

// The path of a process, or nothing when it is unknown.
using PathResolver = std::function<std::optional<std::string>(std::uint32_t processId)>;

// One row per entry: connections, then listeners, in the order of the tables. The resolver is asked once for each
// process id; noProcessText is shown where it knows none.
[[nodiscard]] std::vector<ConnectionRow> BuildConnectionRows(const DriverTables& tables,
                                                             const PathResolver& resolvePath,
                                                             std::string_view noProcessText);

// The text of a state in the list column; empty above 14.
[[nodiscard]] std::string_view ConnectionStateText(std::uint32_t state);
// The same in the connection's details, where state 2 is spelt with a dash.
[[nodiscard]] std::string_view ConnectionStateDetailsText(std::uint32_t state);

}  // namespace brennvar
