#include "ipc/DriverTables.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "support/FakeDevice.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;
using test::FakeDriver;
using test::RawBytes;

constexpr std::uint32_t kConnections = 0x8E872408;
constexpr std::uint32_t kListeners = 0x8E872404;
constexpr std::uint32_t kTotals = 0x8E87240C;

ConnectionEntry Connection(std::uint32_t state, const char* local, std::uint16_t localPort, const char* remote,
                           std::uint16_t remotePort) {
    return {state, *ParseIpv4(local), SwapPort(localPort), *ParseIpv4(remote), SwapPort(remotePort), 0, 0, 0};
}
ListenerEntry Listener(std::uint32_t protocol, const char* local, std::uint16_t localPort) {
    return {protocol, *ParseIpv4(local), SwapPort(localPort), 0};
}

// The given entries, numbered by their process ids, come out in their order whatever order they come in.
template <class Entry, class Decode>
void ExpectOrder(std::vector<Entry> entries, Decode decode) {
    for (std::size_t i = 0; i < entries.size(); ++i) entries[i].processId = static_cast<std::uint32_t>(i);
    for (std::size_t shift = 0; shift < entries.size(); ++shift) {
        std::vector<Entry> given(entries.rbegin(), entries.rend());
        std::rotate(given.begin(), given.begin() + static_cast<std::ptrdiff_t>(shift), given.end());
        const std::vector<Entry> decoded = decode(std::as_bytes(std::span(given)));
        ASSERT_EQ(decoded.size(), entries.size());
        std::uint32_t expected = 0;
        for (const std::uint32_t number : OrderOf(decoded))
            EXPECT_EQ(std::uint32_t{decoded[number].processId}, expected++) << shift;
        EXPECT_EQ(expected, entries.size());
    }
}

TEST(DriverTablesTest, ReadsBothTablesThroughTheInfoDevice) {
    FakeDriver driver;
    driver.answers[kConnections] =
        test::ZerosWith(28, {{0, "\4"}, {4, "\x0A\0\0\1\xC3\x50\xC0\xA8\7\x09\1\xBB\4\3\2\1\x10"sv}, {25, "\2"}});
    driver.answers[kListeners] = test::ZerosWith(14, {{0, "\x11"}, {4, "\x7F\0\0\1\0\x35\x08"sv}});
    auto tables = ReadConnectionTable(driver);
    ASSERT_TRUE(tables && tables->connections.size() == 1 && tables->listeners.size() == 1);
    ConnectionEntry connection = Connection(4, "10.0.0.1", 50000, "192.168.7.9", 443);
    connection.processId = 0x01020304;
    connection.bytesIn = 16;
    connection.bytesOut = 512;
    EXPECT_EQ(std::memcmp(tables->connections.data(), &connection, 28), 0);
    ListenerEntry listener = Listener(17, "127.0.0.1", 53);
    listener.processId = 8;
    EXPECT_EQ(std::memcmp(tables->listeners.data(), &listener, 14), 0);
    EXPECT_EQ(driver.opened, std::vector<std::string>{R"(\\.\brennvarfw_nfo)"});
    EXPECT_EQ(driver.requests, (std::vector<std::size_t>{5'505'024, 2'752'512}));
    EXPECT_EQ(driver.openCount, 0);
    driver.answers.erase(kListeners);
    tables = ReadConnectionTable(driver);
    EXPECT_TRUE(tables && tables->connections.size() == 1 && tables->listeners.empty());
    driver.answers.erase(kConnections);
    EXPECT_FALSE(ReadConnectionTable(driver));
    driver.isPresent = false;
    EXPECT_FALSE(ReadConnectionTable(driver) || ReadTrafficTotals(driver));
}

TEST(DriverTablesTest, IgnoresAPieceOfAnEntryAndWhatIsClaimedBeyondTheBuffer) {
    for (const auto& [size, count] :
         {std::pair<std::size_t, std::size_t>{0, 0}, {27, 0}, {28, 1}, {55, 1}, {84, 3}}) {
        EXPECT_EQ(DecodeConnections(RawBytes(size)).size(), count) << size;
        EXPECT_EQ(DecodeListeners(RawBytes(size / 2)).size(), count) << size;
    }
    FakeDriver driver;
    driver.answers[kConnections] = driver.answers[kListeners] = RawBytes(10'000'000);
    driver.boast = 28;
    const auto tables = ReadConnectionTable(driver);
    EXPECT_TRUE(tables && tables->connections.size() == 196'608 && tables->listeners.size() == 196'608);
}

TEST(DriverTablesTest, SortsConnectionsUpwardsAndTheAddressesOfListenersDownwards) {
    // In network order 1.0.0.2 would come after 2.0.0.1, and port 256 before port 1.
    ExpectOrder<ConnectionEntry>(
        {Connection(0, "9.9.9.9", 9, "9.9.9.9", 9), Connection(3, "1.0.0.2", 5, "0.0.0.0", 0),
         Connection(3, "2.0.0.1", 1, "9.0.0.0", 9), Connection(3, "2.0.0.1", 256, "1.0.0.2", 7),
         Connection(3, "2.0.0.1", 256, "2.0.0.1", 1), Connection(3, "2.0.0.1", 256, "2.0.0.1", 256),
         Connection(3, "255.0.0.0", 0, "0.0.0.0", 0), Connection(12, "0.0.0.0", 0, "0.0.0.0", 0),
         Connection(0xFFFFFFFF, "0.0.0.0", 0, "0.0.0.0", 0)},
        DecodeConnections);
    ExpectOrder<ListenerEntry>(
        {Listener(0, "1.1.1.1", 1), Listener(6, "10.0.0.2", 80), Listener(17, "10.0.0.2", 53),
         Listener(17, "10.0.0.1", 1), Listener(17, "10.0.0.1", 256), Listener(17, "9.255.255.255", 0),
         Listener(17, "0.0.0.0", 0), Listener(47, "255.255.255.255", 0)},
        DecodeListeners);
    std::vector<ConnectionEntry> equal(5, Connection(1, "1.0.0.1", 1, "1.0.0.2", 2));
    equal.front().state = 2;
    EXPECT_EQ(OrderOf(equal), (LargeVector<std::uint32_t>{1, 2, 3, 4, 0}));
}

TEST(DriverTablesTest, ReadsTrafficTotalsWhenBothAreThere) {
    FakeDriver driver;
    driver.answers[kTotals] = test::ZerosWith(32, {{0, "\1\2\3\4\5\6\7\x08"}, {8, "\x0A"}, {16, "unread"}});
    const auto totals = ReadTrafficTotals(driver);
    EXPECT_TRUE(totals && totals->bytesIn == 0x0807060504030201U && totals->bytesOut == 10);
    driver.answers[kTotals].resize(16);
    EXPECT_TRUE(ReadTrafficTotals(driver));
    driver.answers[kTotals].pop_back();
    EXPECT_FALSE(ReadTrafficTotals(driver));
}

}  // namespace
}  // namespace brennvar
