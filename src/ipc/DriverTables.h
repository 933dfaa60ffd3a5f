// The driver's tables of connections and listeners, and its traffic totals.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/LargeVector.h"
#include "ipc/Device.h"
#include "ipc/DriverRecords.h"

namespace brennvar {

// In the order that the driver gives them.
struct DriverTables {
    std::vector<ConnectionEntry> connections;
    std::vector<ListenerEntry> listeners;
};
// How many there are of each.
struct ConnectionCounts {
    std::size_t connections = 0;
    std::size_t listeners = 0;
    friend bool operator==(const ConnectionCounts&, const ConnectionCounts&) = default;
};

// State, local address, local port, remote address, remote port, all ascending; addresses and ports as numbers in
// host order.
[[nodiscard]] bool ConnectionComesBefore(const ConnectionEntry& left, const ConnectionEntry& right);
// Protocol ascending, address DESCENDING, port ascending: unlike the connections, and users know it that way.
[[nodiscard]] bool ListenerComesBefore(const ListenerEntry& left, const ListenerEntry& right);

// The numbers of the entries by these two; equal ones stay in the driver's order.
[[nodiscard]] LargeVector<std::uint32_t> OrderOf(const std::vector<ConnectionEntry>& connections);
[[nodiscard]] LargeVector<std::uint32_t> OrderOf(const std::vector<ListenerEntry>& listeners);

// The bytes of one answer as a table. A piece of an entry at the end is ignored.
[[nodiscard]] std::vector<ConnectionEntry> DecodeConnections(std::span<const std::byte> answer);
[[nodiscard]] std::vector<ListenerEntry> DecodeListeners(std::span<const std::byte> answer);

// Nothing when the device is missing or the request for the connections fails: the view stays as it is. Without an
// answer for the listeners their table is empty.
[[nodiscard]] std::optional<DriverTables> ReadConnectionTable(DeviceOpener& opener);

// Nothing when the device is missing or answers less than the two counters.
[[nodiscard]] std::optional<TrafficTotals> ReadTrafficTotals(DeviceOpener& opener);

}  // namespace brennvar
