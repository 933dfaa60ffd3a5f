#include "ipc/DriverTables.h"

#include <gtest/gtest.h>

#include "support/FakeDevice.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;
using test::FakeDriver;
using test::RawBytes;

constexpr char kInfoDevice[] = R"(\\.\brennvarfw_nfo)";
constexpr std::uint32_t kConnections = 0x8E872408;
constexpr std::uint32_t kListeners = 0x8E872404;
constexpr std::uint32_t kTotals = 0x8E87240C;

RawBytes Raw(std::string_view text) {
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

// 28 bytes as the driver writes them: ESTAB-OUT, 10.0.0.1:50000 to 192.168.7.9:443, process 0x01020304.
constexpr auto kConnectionBytes =
    "\x04\0\0\0\x0A\0\0\x01\xC3\x50\xC0\xA8\x07\x09\x01\xBB\x04\x03\x02\x01\x10\0\0\0\x00\x02\0\0"sv;
// 14 bytes: UDP, 127.0.0.1:53, process 8.
constexpr auto kListenerBytes = "\x11\0\0\0\x7F\0\0\x01\0\x35\x08\0\0\0"sv;

ConnectionEntry Connection(std::uint32_t state, const char* local, std::uint16_t localPort, const char* remote,
                           std::uint16_t remotePort) {
    return {.state = state,
            .localAddress = *ParseIpv4(local),
            .localPort = SwapPort(localPort),
            .remoteAddress = *ParseIpv4(remote),
            .remotePort = SwapPort(remotePort),
            .processId = 0,
            .bytesIn = 0,
            .bytesOut = 0};
}

ListenerEntry Listener(std::uint32_t protocol, const char* local, std::uint16_t localPort) {
    return {
        .protocol = protocol, .localAddress = *ParseIpv4(local), .localPort = SwapPort(localPort), .processId = 0};
}

template <class Entry>
RawBytes RawTable(const std::vector<Entry>& entries) {
    const auto bytes = std::as_bytes(std::span(entries));
    return {bytes.begin(), bytes.end()};
}

// Positions in order of the given entries after sorting, told apart by their process ids.
template <class Entry>
std::vector<std::uint32_t> Order(const std::vector<Entry>& sorted) {
    std::vector<std::uint32_t> order;
    order.reserve(sorted.size());
    for (const Entry& entry : sorted) order.push_back(std::uint32_t{entry.processId});  // packed: copied out
    return order;
}

TEST(DriverTablesTest, ReadsBothTablesThroughTheInfoDevice) {
    FakeDriver driver;
    driver.answers[kConnections] = Raw(kConnectionBytes);
    driver.answers[kListeners] = Raw(kListenerBytes);
    const auto tables = ReadDriverTables(driver);
    ASSERT_TRUE(tables);
    ASSERT_EQ(tables->connections.size(), 1U);
    const ConnectionEntry connection = tables->connections[0];
    EXPECT_EQ(std::uint32_t{connection.state}, 4U);
    EXPECT_EQ(FormatIpv4(connection.localAddress), "10.0.0.1");
    EXPECT_EQ(SwapPort(connection.localPort), 50000);
    EXPECT_EQ(FormatIpv4(connection.remoteAddress), "192.168.7.9");
    EXPECT_EQ(SwapPort(connection.remotePort), 443);
    EXPECT_EQ(std::uint32_t{connection.processId}, 0x01020304U);
    EXPECT_EQ(std::uint32_t{connection.bytesIn}, 16U);
    EXPECT_EQ(std::uint32_t{connection.bytesOut}, 512U);
    ASSERT_EQ(tables->listeners.size(), 1U);
    const ListenerEntry listener = tables->listeners[0];
    EXPECT_EQ(std::uint32_t{listener.protocol}, 17U);
    EXPECT_EQ(FormatIpv4(listener.localAddress), "127.0.0.1");
    EXPECT_EQ(SwapPort(listener.localPort), 53);
    EXPECT_EQ(std::uint32_t{listener.processId}, 8U);

    EXPECT_EQ(driver.opened, std::vector<std::string>{kInfoDevice});
    ASSERT_EQ(driver.requests.size(), 2U);
    EXPECT_EQ(driver.requests[0].code, kConnections);
    EXPECT_EQ(driver.requests[0].size, 5'505'024U);
    EXPECT_EQ(driver.requests[1].code, kListeners);
    EXPECT_EQ(driver.requests[1].size, 2'752'512U);
    EXPECT_EQ(driver.openCount, 0);
}

TEST(DriverTablesTest, IgnoresAPieceOfAnEntryAtTheEnd) {
    struct Row {
        std::size_t connectionSize, listenerSize, connections, listeners;
    };
    const Row rows[] = {{0, 0, 0, 0},   {27, 13, 0, 0}, {28, 14, 1, 1},
                        {55, 27, 1, 1}, {84, 43, 3, 3}, {5'505'024, 2'752'512, 196'608, 196'608}};
    for (const Row& row : rows) {
        FakeDriver driver;
        driver.answers[kConnections] = RawBytes(row.connectionSize);
        driver.answers[kListeners] = RawBytes(row.listenerSize);
        const auto tables = ReadDriverTables(driver);
        ASSERT_TRUE(tables);
        EXPECT_EQ(tables->connections.size(), row.connections) << row.connectionSize;
        EXPECT_EQ(tables->listeners.size(), row.listeners) << row.listenerSize;
    }
}

TEST(DriverTablesTest, CutsWhatADriverClaimsBeyondTheBuffer) {
    struct Boaster : DeviceOpener, Device {
        [[nodiscard]] std::optional<std::size_t> Read(std::uint32_t, std::span<std::byte> output) override {
            return output.size() + 28;
        }
        [[nodiscard]] bool Exchange(std::uint32_t, std::span<std::byte>) override { return false; }
        [[nodiscard]] std::unique_ptr<Device> Open(const std::string&) override {
            return std::make_unique<Boaster>();
        }
    } boaster;
    const auto tables = ReadDriverTables(boaster);
    ASSERT_TRUE(tables);
    EXPECT_EQ(tables->connections.size(), 196'608U);
    EXPECT_EQ(tables->listeners.size(), 196'608U);
}

TEST(DriverTablesTest, SortsConnectionsByStateAndEndpointsInHostOrder) {
    std::vector<ConnectionEntry> entries = {
        // In the wanted order. In network order 1.0.0.2 would come after 2.0.0.1, and port 256 before port 1.
        Connection(0, "9.9.9.9", 9, "9.9.9.9", 9),          Connection(3, "1.0.0.2", 5, "0.0.0.0", 0),
        Connection(3, "2.0.0.1", 1, "9.0.0.0", 9),          Connection(3, "2.0.0.1", 256, "1.0.0.2", 7),
        Connection(3, "2.0.0.1", 256, "2.0.0.1", 1),        Connection(3, "2.0.0.1", 256, "2.0.0.1", 256),
        Connection(3, "255.0.0.0", 0, "0.0.0.0", 0),        Connection(12, "0.0.0.0", 0, "0.0.0.0", 0),
        Connection(0xFFFFFFFF, "0.0.0.0", 0, "0.0.0.0", 0),
    };
    for (std::size_t i = 0; i < entries.size(); ++i) entries[i].processId = static_cast<std::uint32_t>(i);
    for (const std::vector<int>& given :
         std::vector<std::vector<int>>{{8, 7, 6, 5, 4, 3, 2, 1, 0}, {3, 8, 0, 5, 2, 7, 1, 6, 4}}) {
        std::vector<ConnectionEntry> shuffled;
        shuffled.reserve(given.size());
        for (const int i : given) shuffled.push_back(entries[static_cast<std::size_t>(i)]);
        FakeDriver driver;
        driver.answers[kConnections] = RawTable(shuffled);
        const auto tables = ReadDriverTables(driver);
        ASSERT_TRUE(tables);
        EXPECT_EQ(Order(tables->connections), (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
    }
}

TEST(DriverTablesTest, SortsListenersWithTheirAddressesDescending) {
    std::vector<ListenerEntry> entries = {
        Listener(0, "1.1.1.1", 1),        Listener(6, "10.0.0.2", 80),  Listener(17, "10.0.0.2", 53),
        Listener(17, "10.0.0.1", 1),      Listener(17, "10.0.0.1", 53), Listener(17, "10.0.0.1", 256),
        Listener(17, "9.255.255.255", 0), Listener(17, "0.0.0.0", 0),   Listener(47, "255.255.255.255", 0),
    };
    for (std::size_t i = 0; i < entries.size(); ++i) entries[i].processId = static_cast<std::uint32_t>(i);
    std::vector<ListenerEntry> reversed(entries.rbegin(), entries.rend());
    FakeDriver driver;
    driver.answers[kConnections] = {};
    driver.answers[kListeners] = RawTable(reversed);
    const auto tables = ReadDriverTables(driver);
    ASSERT_TRUE(tables);
    EXPECT_EQ(Order(tables->listeners), (std::vector<std::uint32_t>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(DriverTablesTest, LeavesTheViewAloneUnlessConnectionsCame) {
    FakeDriver driver;
    driver.answers[kListeners] = Raw(kListenerBytes);
    EXPECT_FALSE(ReadDriverTables(driver));
    EXPECT_EQ(driver.requests.size(), 1U);  // nothing more is asked after a failure
    EXPECT_EQ(driver.openCount, 0);

    driver.answers.erase(kListeners);
    driver.answers[kConnections] = Raw(kConnectionBytes);
    const auto tables = ReadDriverTables(driver);
    ASSERT_TRUE(tables);
    EXPECT_EQ(tables->connections.size(), 1U);
    EXPECT_TRUE(tables->listeners.empty());

    driver.isPresent = false;
    EXPECT_FALSE(ReadDriverTables(driver));
    EXPECT_FALSE(ReadTrafficTotals(driver));
}

TEST(DriverTablesTest, ReadsTrafficTotalsWhenTheyAreWhole) {
    FakeDriver driver;
    EXPECT_FALSE(ReadTrafficTotals(driver));
    driver.answers[kTotals] = test::ZerosWith(32, {{0, "\1\2\3\4\5\6\7\x08"}, {8, "\x0A"}, {16, "unread"}});
    const auto totals = ReadTrafficTotals(driver);
    ASSERT_TRUE(totals);
    EXPECT_EQ(std::uint64_t{totals->bytesIn}, 0x0807060504030201U);
    EXPECT_EQ(std::uint64_t{totals->bytesOut}, 10U);
    EXPECT_EQ(driver.opened.back(), kInfoDevice);
    EXPECT_EQ(driver.requests.back().size, 32U);
    driver.answers[kTotals].pop_back();
    EXPECT_FALSE(ReadTrafficTotals(driver));
}

}  // namespace
}  // namespace brennvar
