// The driver's tables of connections and listeners, sorted for the list, and its traffic totals.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "ipc/Device.h"
#include "ipc/DriverRecords.h"

namespace brennvar {

struct DriverTables {
    std::vector<ConnectionEntry> connections;  // by ConnectionComesBefore
    std::vector<ListenerEntry> listeners;      // by ListenerComesBefore
};

// State, local address, local port, remote address, remote port, all ascending; addresses and ports as numbers in
// host order.
[[nodiscard]] bool ConnectionComesBefore(const ConnectionEntry& left, const ConnectionEntry& right);
// Protocol ascending, address DESCENDING, port ascending: unlike the connections, and users know it that way.
[[nodiscard]] bool ListenerComesBefore(const ListenerEntry& left, const ListenerEntry& right);

// The bytes of one answer as a sorted table. A piece of an entry at the end is ignored.
[[nodiscard]] std::vector<ConnectionEntry> DecodeConnections(std::span<const std::byte> answer);
[[nodiscard]] std::vector<ListenerEntry> DecodeListeners(std::span<const std::byte> answer);

// Nothing when the device is missing or the request for the connections fails: the view stays as it is. Without an
// answer for the listeners their table is empty.
[[nodiscard]] std::optional<DriverTables> ReadConnectionTable(DeviceOpener& opener);

// How many there are of each.
struct ConnectionCounts {
    std::size_t connections = 0;
    std::size_t listeners = 0;
    friend bool operator==(const ConnectionCounts&, const ConnectionCounts&) = default;
};
// The same requests, without looking into the tables.
[[nodiscard]] std::optional<ConnectionCounts> CountConnections(DeviceOpener& opener);

// Nothing when the device is missing or answers less than the two counters.
[[nodiscard]] std::optional<TrafficTotals> ReadTrafficTotals(DeviceOpener& opener);

}  // namespace brennvar
