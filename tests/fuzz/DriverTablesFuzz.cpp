// Whatever the driver answers becomes sorted tables and well-formed rows. The first two bytes say where the answer
// for the connections ends; the rest is the answer for the listeners.
#include <algorithm>

#include "FuzzInput.h"
#include "ipc/DriverTables.h"
#include "support/FakeDevice.h"
#include "views/ConnectionRows.h"

namespace {

using brennvar::fuzz::Require;

void CheckRow(const brennvar::ConnectionRow& row) {
    Require(row.state <= brennvar::kStateListenOther);
    Require(!brennvar::ConnectionStateText(row.state).empty());
    Require(row.address.size() >= 9 && row.address.size() <= 46);  // "0.0.0.0:0" to two endpoints and an arrow
    Require(!row.name.empty() && row.path.size() >= row.name.size());
    const std::string local = brennvar::FormatIpv4(row.localAddress) + ":" + std::to_string(row.localPort);
    Require(row.address.compare(0, local.size(), local) == 0);
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
    const DriverTables tables{.connections = DecodeConnections(connections),
                              .listeners = DecodeListeners(listeners)};
    Require(tables.connections.size() == connections.size() / sizeof(ConnectionEntry));
    Require(tables.listeners.size() == listeners.size() / sizeof(ListenerEntry));
    Require(std::is_sorted(tables.connections.begin(), tables.connections.end(), ConnectionComesBefore));
    Require(std::is_sorted(tables.listeners.begin(), tables.listeners.end(), ListenerComesBefore));

    // Paths of every kind: none, empty, without a folder, with nothing but a folder.
    const PathResolver resolve = [](std::uint32_t id) -> std::optional<std::string> {
        if (id % 5 == 0) return std::nullopt;
        return std::string("C:\\Tools\\A.EXE\\").substr(0, id % 16);
    };
    const auto rows = BuildConnectionRows(tables, resolve, "none");
    Require(rows.size() == tables.connections.size() + tables.listeners.size());
    std::for_each(rows.begin(), rows.end(), CheckRow);

    test::FakeDriver driver;
    driver.answers[kControlReadTotals] = {connections.begin(), connections.end()};
    Require(ReadTrafficTotals(driver).has_value() == (connections.size() >= sizeof(TrafficTotals)));
    return 0;
}
