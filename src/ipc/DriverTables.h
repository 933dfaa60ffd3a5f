// The driver's tables of connections and listeners, sorted for the list, and its traffic totals.
#pragma once

#include <optional>
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

// Nothing when the device is missing or gives no connections: the view stays as it is. Without an answer for the
// listeners their table is empty. A piece of an entry at the end of an answer is ignored.
[[nodiscard]] std::optional<DriverTables> ReadDriverTables(DeviceOpener& opener);

// Nothing when the device is missing or answers less than a whole record.
[[nodiscard]] std::optional<TrafficTotals> ReadTrafficTotals(DeviceOpener& opener);

}  // namespace brennvar
