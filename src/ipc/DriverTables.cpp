#include "ipc/DriverTables.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <utility>

#include "base/RadixSort.h"

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

struct Place {
    SortKey key;
    std::uint32_t entry;  // its number in the table
};

template <RecordType Entry>
std::vector<Entry> DecodeEntries(std::span<const std::byte> answer) {
    std::vector<Entry> entries(answer.size() / sizeof(Entry));
    if (!entries.empty()) std::memcpy(entries.data(), answer.data(), entries.size() * sizeof(Entry));
    return entries;
}

template <class Entry>
LargeVector<std::uint32_t> SortedNumbers(const std::vector<Entry>& entries) {
    LargeVector<Place> places(entries.size());
    for (std::uint32_t number = 0; number < places.size(); ++number) {
        places[number] = {.key = KeyOf(entries[number]), .entry = number};
    }
    LargeVector<Place> room;
    RadixSort(places, room, [](const Place& place) { return place.key.low; });
    RadixSort(places, room, [](const Place& place) { return place.key.high; });
    LargeVector<std::uint32_t> numbers(places.size());
    std::transform(places.begin(), places.end(), numbers.begin(), [](const Place& place) { return place.entry; });
    return numbers;
}

// What the driver put into a buffer of the size that it expects. The buffer is large and lives for one request.
class TableAnswer {
public:
    TableAnswer(Device& device, std::uint32_t code, std::size_t bufferSize)
        : m_buffer(new (std::nothrow) std::byte[bufferSize]) {
        if (!m_buffer) return;  // without the memory the request counts as failed
        std::memset(m_buffer.get(), 0, bufferSize);
        const auto returned = device.Read(code, std::span(m_buffer.get(), bufferSize));
        if (returned) m_answer = std::span(m_buffer.get(), std::min(*returned, bufferSize));
    }
    // Nothing when the request failed; valid as long as this object.
    [[nodiscard]] const std::optional<std::span<const std::byte>>& Bytes() const { return m_answer; }

private:
    std::unique_ptr<std::byte[]> m_buffer;
    std::optional<std::span<const std::byte>> m_answer;
};

}  // namespace

bool ConnectionComesBefore(const ConnectionEntry& left, const ConnectionEntry& right) {
    return IsLess(KeyOf(left), KeyOf(right));
}

bool ListenerComesBefore(const ListenerEntry& left, const ListenerEntry& right) {
    return IsLess(KeyOf(left), KeyOf(right));
}

std::vector<ConnectionEntry> DecodeConnections(std::span<const std::byte> answer) {
    return DecodeEntries<ConnectionEntry>(answer);
}

std::vector<ListenerEntry> DecodeListeners(std::span<const std::byte> answer) {
    return DecodeEntries<ListenerEntry>(answer);
}

LargeVector<std::uint32_t> OrderOf(const std::vector<ConnectionEntry>& connections) {
    return SortedNumbers(connections);
}

LargeVector<std::uint32_t> OrderOf(const std::vector<ListenerEntry>& listeners) {
    return SortedNumbers(listeners);
}

std::optional<DriverTables> ReadConnectionTable(DeviceOpener& opener) {
    const auto device = opener.Open(kDriverInfoDeviceName);
    if (!device) return std::nullopt;
    DriverTables tables;
    {
        const TableAnswer answer(*device, kControlReadConnections, kConnectionTableSize);
        if (!answer.Bytes()) return std::nullopt;
        tables.connections = DecodeConnections(*answer.Bytes());
    }
    const TableAnswer answer(*device, kControlReadListeners, kListenerTableSize);
    if (answer.Bytes()) tables.listeners = DecodeListeners(*answer.Bytes());
    return tables;
}

std::optional<TrafficTotals> ReadTrafficTotals(DeviceOpener& opener) {
    const auto device = opener.Open(kDriverInfoDeviceName);
    if (!device) return std::nullopt;
    TrafficTotals totals{};
    const auto returned = device->Read(kControlReadTotals, WritableRecordBytes(totals));
    // What stands behind the two counters is of no use.
    if (!returned || *returned < offsetof(TrafficTotals, bytesOut) + sizeof totals.bytesOut) return std::nullopt;
    return totals;
}

}  // namespace brennvar
