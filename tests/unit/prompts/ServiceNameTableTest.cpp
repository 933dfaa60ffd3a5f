#include "prompts/ServiceNameTable.h"

#include <gtest/gtest.h>

#include <vector>

namespace brennvar {
namespace {

constexpr std::uint32_t kIcmp = 1, kTcp = 6, kUdp = 17;

// All ports that have a name for a protocol.
std::vector<int> NamedPorts(std::uint32_t protocol) {
    std::vector<int> ports;
    for (int port = 0; port <= 0xFFFF; ++port) {
        if (FindServiceName(static_cast<std::uint16_t>(port), protocol).textNumber != 483) ports.push_back(port);
    }
    return ports;
}

TEST(ServiceNameTableTest, NamesTheseTcpPortsInTheOrderOfTheirTexts) {
    const std::vector<int> ports = {21, 22,  23,  25,  43,  53,  67,  68,  70,  79,  80,
                                    88, 107, 110, 119, 123, 137, 138, 139, 194, 389, 443};
    EXPECT_EQ(NamedPorts(kTcp), ports);
    int number = 461;
    for (const int port : ports) {
        EXPECT_EQ(FindServiceName(static_cast<std::uint16_t>(port), kTcp).textNumber, number++) << port;
    }
}

TEST(ServiceNameTableTest, NamesFewerPortsForUdpAndNoneForOtherProtocols) {
    EXPECT_EQ(NamedPorts(kUdp),
              (std::vector<int>{22, 53, 67, 68, 70, 80, 88, 107, 110, 123, 137, 138, 139, 194, 389, 443}));
    EXPECT_EQ(NamedPorts(kIcmp), std::vector<int>());
    EXPECT_EQ(NamedPorts(0), std::vector<int>());
}

TEST(ServiceNameTableTest, CarriesTheEnglishTexts) {
    struct Row {
        std::uint16_t port;
        std::uint32_t protocol;
        std::string_view expected;
    };
    const Row rows[] = {
        {53, kUdp, "DNS - Domain name resolution"},
        {21, kTcp, "FTP - File transfer"},
        {21, kUdp, "Unspecified"},  // the row is for TCP
        {443, kIcmp, "Unspecified"},
        {443, kTcp, "HTTPS - Secure web connection"},
        {389, kUdp, "LDAP - Lightweight directory access protocol"},
        {0, kTcp, "Unspecified"},
        {13568, kUdp, "Unspecified"},  // 53 with its bytes swapped
    };
    for (const Row& row : rows)
        EXPECT_EQ(FindServiceName(row.port, row.protocol).english, row.expected) << row.port;
}

}  // namespace
}  // namespace brennvar
