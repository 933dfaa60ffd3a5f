#include "ipc/DriverTables.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

namespace brennvar {
namespace {

// The fields of an entry in the order of their weight, packed into two numbers: one or two comparisons instead of
// up to five.
struct SortKey {
    std::uint64_t high;
    std::uint64_t low;
};

bool IsLess(const SortKey& left, const SortKey& right) {
    return left.high != right.high ? left.high < right.high : left.low < right.low;
}

std::uint64_t Pack(std::uint32_t high, std::uint32_t low) {
    return (std::uint64_t{high} << 32) | low;
}

SortKey KeyOf(const ConnectionEntry& entry) {
    return {.high = Pack(entry.state, SwapAddress(entry.localAddress)),
            .low = (std::uint64_t{SwapPort(entry.localPort)} << 48) |
                   (std::uint64_t{SwapAddress(entry.remoteAddress)} << 16) | SwapPort(entry.remotePort)};
}

SortKey KeyOf(const ListenerEntry& entry) {
    // The complement turns the order of the addresses round.
    return {.high = Pack(entry.protocol, ~SwapAddress(entry.localAddress)), .low = SwapPort(entry.localPort)};
}

// One table of the driver, or nothing when the request fails. The buffer has the size that the driver expects and
// lives only here; the table keeps what was filled.
template <RecordType Entry>
std::optional<std::vector<Entry>> ReadTable(Device& device, std::uint32_t code, std::size_t bufferSize) {
    const std::unique_ptr<std::byte[]> buffer(new (std::nothrow) std::byte[bufferSize]());
    if (!buffer) return std::nullopt;
    const auto returned = device.Read(code, std::span(buffer.get(), bufferSize));
    if (!returned) return std::nullopt;
    std::vector<Entry> table(std::min(*returned, bufferSize) / sizeof(Entry));
    if (!table.empty()) std::memcpy(table.data(), buffer.get(), table.size() * sizeof(Entry));
    return table;
}

}  // namespace

bool ConnectionComesBefore(const ConnectionEntry& left, const ConnectionEntry& right) {
    return IsLess(KeyOf(left), KeyOf(right));
}

bool ListenerComesBefore(const ListenerEntry& left, const ListenerEntry& right) {
    return IsLess(KeyOf(left), KeyOf(right));
}

std::optional<DriverTables> ReadDriverTables(DeviceOpener& opener) {
    const auto device = opener.Open(kDriverInfoDeviceName);
    if (!device) return std::nullopt;
    auto connections = ReadTable<ConnectionEntry>(*device, kControlReadConnections, kConnectionTableSize);
    if (!connections) return std::nullopt;

    DriverTables tables{.connections = std::move(*connections), .listeners = {}};
    if (auto listeners = ReadTable<ListenerEntry>(*device, kControlReadListeners, kListenerTableSize)) {
        tables.listeners = std::move(*listeners);
    }
    std::sort(tables.connections.begin(), tables.connections.end(), ConnectionComesBefore);
    std::sort(tables.listeners.begin(), tables.listeners.end(), ListenerComesBefore);
    return tables;
}

std::optional<TrafficTotals> ReadTrafficTotals(DeviceOpener& opener) {
    const auto device = opener.Open(kDriverInfoDeviceName);
    if (!device) return std::nullopt;
    TrafficTotals totals{};
    const auto returned = device->Read(kControlReadTotals, WritableRecordBytes(totals));
    if (!returned || *returned < sizeof totals) return std::nullopt;
    return totals;
}

}  // namespace brennvar
