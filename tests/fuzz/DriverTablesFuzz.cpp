// Whatever the driver answers becomes sorted tables and well-formed rows. The first two bytes say where the answer
// for the connections ends; the rest is the answer for the listeners.
#include <algorithm>

#include "FuzzInput.h"
#include "ipc/DriverTables.h"
#include "support/FakeDevice.h"
#include "views/ConnectionOrder.h"

namespace {

using brennvar::fuzz::Require;

void CheckRow(const brennvar::ConnectionTable& table, std::uint32_t number) {
    using namespace brennvar;
    const ConnectionRow& row = table.Row(number);
    Require(row.state <= kStateListenOther);
    Require(!ConnectionStateText(row.state).empty());
    Require(table.Find(KeyOf(row)) == number);
    Require(row.since <= 140);
    std::string address;
    AppendConnectionAddress(address, row);
    Require(address.size() >= 9 && address.size() <= 46);  // "0.0.0.0:0" to two endpoints and an arrow
    const std::string local = FormatIpv4(row.localAddress) + ":" + std::to_string(row.localPort);
    Require(address.compare(0, local.size(), local) == 0);
    Require(!table.ProgramOf(row).name.empty());
}

template <class Entry>
std::vector<Entry> InOrder(const std::vector<Entry>& entries) {
    std::vector<Entry> sorted;
    for (const std::uint32_t number : brennvar::OrderOf(entries)) sorted.push_back(entries.at(number));
    return sorted;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    if (size < 2) return 0;
    const std::span<const std::byte> rest = std::as_bytes(std::span(data + 2, size - 2));
    const std::size_t split =
        std::min<std::size_t>(static_cast<std::size_t>(data[0] | (data[1] << 8)), rest.size());
    const auto connections = rest.first(split);
    const auto listeners = rest.subspan(split);

    // The answers are decoded without a device: its buffers of megabytes would leave little time for anything else.
    const DriverTables tables{.connections = InOrder(DecodeConnections(connections)),
                              .listeners = InOrder(DecodeListeners(listeners))};
    Require(tables.connections.size() == connections.size() / sizeof(ConnectionEntry));
    Require(tables.listeners.size() == listeners.size() / sizeof(ListenerEntry));
    Require(std::is_sorted(tables.connections.begin(), tables.connections.end(), ConnectionComesBefore));
    Require(std::is_sorted(tables.listeners.begin(), tables.listeners.end(), ListenerComesBefore));

    // Paths of every kind: none, empty, without a folder, with nothing but a folder.
    const ProgramSource programs{
        .pathOf = [](std::uint32_t id) -> std::optional<std::string> {
            if (id % 5 == 0) return std::nullopt;
            return std::string("C:\\Tools\\A.EXE\\").substr(0, id % 16);
        },
        .descriptionOf = [](const std::string& path) { return path.substr(path.size() / 2); },
        .noProcess = "none"};
    // The first half of each table, then all of it: what has come is new, and nothing goes.
    DriverTables half = tables;
    half.connections.resize(half.connections.size() / 2);
    half.listeners.resize(half.listeners.size() / 2);
    using std::chrono::seconds;
    const ConnectionTable before(half, seconds(10), programs, nullptr, true);
    const ConnectionTable now(tables, seconds(12), programs, &before, false);
    const ConnectionTable after(half, seconds(14), programs, &now, false);
    Require(now.Rows().size() == tables.connections.size() + tables.listeners.size());
    Require(after.Rows().size() == now.Rows().size());
    for (const ConnectionTable* const table : {&now, &after}) {
        for (std::uint32_t row = 0; row < table->Rows().size(); ++row) CheckRow(*table, row);
        LargeVector<std::uint32_t> order = table->OrderAsRead();
        std::sort(order.begin(), order.end());
        Require(std::adjacent_find(order.begin(), order.end()) == order.end());
    }

    test::FakeDriver driver;
    driver.answers[kControlReadTotals] = {connections.begin(), connections.end()};
    Require(ReadTrafficTotals(driver).has_value() == (connections.size() >= 16));  // the two counters
    return 0;
}
