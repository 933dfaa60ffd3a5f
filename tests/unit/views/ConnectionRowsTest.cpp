#include "views/ConnectionRows.h"

#include <gtest/gtest.h>

#include <map>

namespace brennvar {
namespace {

constexpr std::string_view kNoProcess = "no process associated";

ConnectionEntry Connection(std::uint32_t state, std::uint32_t processId = 1) {
    return {.state = state,
            .localAddress = *ParseIpv4("10.0.0.1"),
            .localPort = SwapPort(50000),
            .remoteAddress = *ParseIpv4("255.255.255.255"),
            .remotePort = SwapPort(65535),
            .processId = processId,
            .bytesIn = 11,
            .bytesOut = 22};
}

ListenerEntry Listener(std::uint32_t protocol) {
    return {.protocol = protocol, .localAddress = *ParseIpv4("0.0.0.0"), .localPort = SwapPort(53), .processId = 2};
}

std::optional<std::string> NoPath(std::uint32_t) {
    return std::nullopt;
}

TEST(ConnectionRowsTest, FillsARowPerConnectionAndThenPerListener) {
    const DriverTables tables{.connections = {Connection(4)}, .listeners = {Listener(kProtocolUdp)}};
    const auto rows = BuildConnectionRows(
        tables,
        [](std::uint32_t id) -> std::optional<std::string> {
            return id == 1 ? R"(C:\Program Files\Tool\TOOL.EXE)" : R"(D:\Server.exe)";
        },
        kNoProcess);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0], (ConnectionRow{.address = "10.0.0.1:50000 -> 255.255.255.255:65535",
                                      .name = "tool.exe",
                                      .path = R"(c:\program files\tool\tool.exe)",
                                      .state = 4,
                                      .outgoing = true,
                                      .processId = 1,
                                      .localAddress = 0x0100000A,
                                      .localPort = 50000,
                                      .remoteAddress = 0xFFFFFFFF,
                                      .remotePort = 65535,
                                      .bytesIn = 11,
                                      .bytesOut = 22}));
    EXPECT_EQ(rows[1], (ConnectionRow{.address = "0.0.0.0:53",
                                      .name = "server.exe",
                                      .path = R"(d:\server.exe)",
                                      .state = 12,
                                      .processId = 2,
                                      .localPort = 53}));
}

TEST(ConnectionRowsTest, StatesDecideArrowAndText) {
    struct Row {
        std::uint32_t given, state;
        bool outgoing;
        std::string_view text;
    };
    const Row rows[] = {
        {0, 0, true, "?"},          {1, 1, true, "SYN-SENT"},  {2, 2, false, "SYN_RCVD"},
        {3, 3, false, "ESTAB-IN"},  {4, 4, true, "ESTAB-OUT"}, {5, 5, true, "FIN-WAIT-1"},
        {6, 6, true, "FIN-WAIT-2"}, {7, 7, true, "TIME-WAIT"}, {8, 8, true, "CLOSE-WAIT"},
        {9, 9, true, "LAST-ACK"},   {10, 10, true, "CLOSED"},  {11, 0, true, "?"},
        {12, 0, true, "?"},         {14, 0, true, "?"},        {0xFFFFFFFF, 0, true, "?"},
    };
    for (const Row& row : rows) {
        const auto built =
            BuildConnectionRows({.connections = {Connection(row.given)}, .listeners = {}}, NoPath, "");
        ASSERT_EQ(built.size(), 1U);
        EXPECT_EQ(built[0].state, row.state) << row.given;
        EXPECT_EQ(built[0].outgoing, row.outgoing) << row.given;
        EXPECT_NE(built[0].address.find(row.outgoing ? " -> " : " <- "), std::string::npos) << row.given;
        EXPECT_EQ(ConnectionStateText(built[0].state), row.text) << row.given;
    }
}

TEST(ConnectionRowsTest, ProtocolsOfListenersBecomeStates) {
    struct Row {
        std::uint32_t protocol, state;
        std::string_view text;
    };
    const Row rows[] = {{6, 11, "LISTEN-TCP"},
                        {17, 12, "LISTEN-UDP"},
                        {0, 13, "LISTEN-IP"},
                        {47, 14, "LISTEN-?"},
                        {0xFFFFFFFF, 14, "LISTEN-?"}};
    for (const Row& row : rows) {
        const auto built =
            BuildConnectionRows({.connections = {}, .listeners = {Listener(row.protocol)}}, NoPath, "");
        ASSERT_EQ(built.size(), 1U);
        EXPECT_EQ(built[0].state, row.state) << row.protocol;
        EXPECT_FALSE(built[0].outgoing);
        EXPECT_EQ(ConnectionStateText(built[0].state), row.text) << row.protocol;
    }
}

TEST(ConnectionRowsTest, SpellsOneStateDifferentlyInTheDetails) {
    EXPECT_EQ(ConnectionStateDetailsText(2), "SYN-RCVD");
    EXPECT_EQ(ConnectionStateDetailsText(3), "ESTAB-IN");
    EXPECT_EQ(ConnectionStateText(15), "");
    EXPECT_EQ(ConnectionStateDetailsText(0xFFFFFFFF), "");
}

TEST(ConnectionRowsTest, ShowsATextForUnknownProcesses) {
    const std::map<std::uint32_t, std::optional<std::string>> paths = {
        {1, std::nullopt}, {2, ""}, {3, "System"}, {4, "C:\\Folder\\"}};
    DriverTables tables;
    for (const auto& [id, path] : paths) tables.connections.push_back(Connection(4, id));
    const auto rows = BuildConnectionRows(
        tables, [&](std::uint32_t id) { return paths.at(id); }, kNoProcess);
    ASSERT_EQ(rows.size(), 4U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(rows[i].name, kNoProcess);
        EXPECT_EQ(rows[i].path, kNoProcess);
    }
    EXPECT_EQ(rows[2].name, "system");
    EXPECT_EQ(rows[3].name, "c:\\folder\\");
    EXPECT_EQ(BuildConnectionRows(tables, {}, kNoProcess)[2].name, kNoProcess);
}

TEST(ConnectionRowsTest, ResolvesEachProcessOnceInOneBuild) {
    std::map<std::uint32_t, int> calls;
    const PathResolver count = [&](std::uint32_t id) -> std::optional<std::string> {
        ++calls[id];
        return id == 2 ? std::nullopt : std::optional<std::string>("a");
    };
    const DriverTables tables{.connections = {Connection(1, 1), Connection(2, 2), Connection(3, 1)},
                              .listeners = {Listener(6), Listener(17)}};
    EXPECT_EQ(BuildConnectionRows(tables, count, "").size(), 5U);
    EXPECT_EQ(calls, (std::map<std::uint32_t, int>{{1, 1}, {2, 1}}));
}

}  // namespace
}  // namespace brennvar
