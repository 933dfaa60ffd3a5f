#include "views/ConnectionRows.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

ConnectionEntry Connection(std::uint32_t state, std::uint32_t processId = 1) {
    return {state, *ParseIpv4("10.0.0.1"), SwapPort(50000), 0xFFFFFFFF, 0xFFFF, processId, 11, 22};
}
ListenerEntry Listener(std::uint32_t protocol) {
    return {protocol, 0, SwapPort(53), 2};
}

TEST(ConnectionRowsTest, FillsARowPerConnectionAndThenPerListener) {
    const char* const paths[] = {nullptr, R"(C:\Tool\TOOL.EXE)", "System", "", "C:\\Folder\\"};
    std::string asked;
    const PathResolver resolve = [&](std::uint32_t id) {
        asked += std::to_string(id);
        return paths[id] ? std::optional<std::string>(paths[id]) : std::nullopt;
    };
    const DriverTables tables{{Connection(4), Connection(4, 0), Connection(4, 3), Connection(4, 4), Connection(4)},
                              {Listener(17)}};
    const auto rows = BuildConnectionRows(tables, resolve, "no process");
    EXPECT_EQ(asked, "10342");  // each once
    ASSERT_EQ(rows.size(), 6U);
    EXPECT_EQ(rows[0], (ConnectionRow{"10.0.0.1:50000 -> 255.255.255.255:65535", "tool.exe", R"(c:\tool\tool.exe)",
                                      4, true, 1, 0x0100000A, 50000, 0xFFFFFFFF, 65535, 11, 22}));
    EXPECT_EQ(rows[1].path, "no process");
    EXPECT_EQ(rows[2].name, "no process");
    EXPECT_EQ(rows[3].name, "c:\\folder\\");
    EXPECT_EQ(rows[4], rows[0]);
    EXPECT_EQ(rows[5], (ConnectionRow{"0.0.0.0:53", "system", "system", 12, false, 2, 0, 53, 0, 0, 0, 0}));
}

TEST(ConnectionRowsTest, StatesAndProtocolsDecideArrowAndText) {
    const std::pair<std::uint32_t, std::string_view> states[] = {
        {0, "-> ?"},          {1, "-> SYN-SENT"},   {2, "<- SYN_RCVD"},  {3, "<- ESTAB-IN"},   {4, "-> ESTAB-OUT"},
        {5, "-> FIN-WAIT-1"}, {6, "-> FIN-WAIT-2"}, {7, "-> TIME-WAIT"}, {8, "-> CLOSE-WAIT"}, {9, "-> LAST-ACK"},
        {10, "-> CLOSED"},    {11, "-> ?"},         {14, "-> ?"},        {0xFFFFFFFF, "-> ?"}};
    const std::pair<std::uint32_t, std::string_view> protocols[] = {
        {6, "LISTEN-TCP"}, {17, "LISTEN-UDP"}, {0, "LISTEN-IP"}, {47, "LISTEN-?"}, {0xFFFFFFFF, "LISTEN-?"}};
    for (const auto& [state, expected] : states) {
        const auto row = BuildConnectionRows({{Connection(state)}, {}}, {}, "").at(0);
        EXPECT_EQ(row.outgoing, expected.starts_with("->")) << state;
        EXPECT_NE(row.address.find(expected.substr(0, 2)), std::string::npos) << state;
        EXPECT_EQ(ConnectionStateText(row.state), expected.substr(3)) << state;
    }
    for (const auto& [protocol, expected] : protocols) {
        EXPECT_EQ(ConnectionStateText(BuildConnectionRows({{}, {Listener(protocol)}}, {}, "").at(0).state),
                  expected);
    }
    EXPECT_EQ(ConnectionStateDetailsText(2), "SYN-RCVD");  // spelled differently in the details
    for (const std::uint32_t none : {15U, 0xFFFFFFFFU}) EXPECT_EQ(ConnectionStateDetailsText(none), "");
}

}  // namespace
}  // namespace brennvar
