#include "ipc/DriverTables.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <numeric>
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

struct Place {
    SortKey key;
    std::uint32_t entry;  // its number in the answer
};

// One step of a radix sort: into the order of these eight bits, equal ones left as they are.
void SortByByte(std::vector<Place>& places, std::vector<Place>& room, std::uint64_t SortKey::*word,
                unsigned shift) {
    std::array<std::size_t, 256> starts{};
    const auto byteOf = [=](const Place& place) { return (place.key.*word >> shift) & 0xFF; };
    for (const Place& place : places) ++starts[byteOf(place)];
    std::exclusive_scan(starts.begin(), starts.end(), starts.begin(), std::size_t{0});
    for (const Place& place : places) room[starts[byteOf(place)]++] = place;
    places.swap(room);
}

// A full table takes a third of the time of a sort by comparisons: its keys are short, and most of their bytes are
// the same in all entries and need no step.
void SortPlaces(std::vector<Place>& places) {
    SortKey differing{};
    for (const Place& place : places) {
        differing.high |= place.key.high ^ places.front().key.high;
        differing.low |= place.key.low ^ places.front().key.low;
    }
    std::vector<Place> room(places.size());
    for (const auto word : {&SortKey::low, &SortKey::high}) {
        for (unsigned shift = 0; shift < 64; shift += 8) {
            if (((differing.*word >> shift) & 0xFF) != 0) SortByByte(places, room, word, shift);
        }
    }
}

// Sorted; a piece of an entry at the end is ignored.
template <RecordType Entry>
std::vector<Entry> DecodeEntries(std::span<const std::byte> answer) {
    std::vector<Place> places(answer.size() / sizeof(Entry));
    const auto read = [answer](std::uint32_t number) {
        Entry entry;
        std::memcpy(&entry, answer.data() + number * sizeof(Entry), sizeof entry);
        return entry;
    };
    for (std::uint32_t number = 0; number < places.size(); ++number) {
        places[number] = {.key = KeyOf(read(number)), .entry = number};
    }
    SortPlaces(places);
    std::vector<Entry> entries;
    entries.reserve(places.size());
    for (const Place& place : places) entries.push_back(read(place.entry));
    return entries;
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

std::optional<ConnectionCounts> CountConnections(DeviceOpener& opener) {
    const auto device = opener.Open(kDriverInfoDeviceName);
    if (!device) return std::nullopt;
    ConnectionCounts counts;
    {
        const TableAnswer answer(*device, kControlReadConnections, kConnectionTableSize);
        if (!answer.Bytes()) return std::nullopt;
        counts.connections = answer.Bytes()->size() / sizeof(ConnectionEntry);
    }
    const TableAnswer answer(*device, kControlReadListeners, kListenerTableSize);
    if (answer.Bytes()) counts.listeners = answer.Bytes()->size() / sizeof(ListenerEntry);
    return counts;
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
