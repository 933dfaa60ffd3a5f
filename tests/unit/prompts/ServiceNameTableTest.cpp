#include "prompts/ServiceNameTable.h"

#include <gtest/gtest.h>

#include <vector>

namespace brennvar {
namespace {

constexpr std::uint32_t kIcmp = 1, kTcp = 6, kUdp = 17;

// All ports that have a name for a protocol, each with its text in the order of the texts.
std::vector<int> NamedPorts(std::uint32_t protocol) {
    std::vector<int> ports;
    int last = 460;
    for (int port = 0; port <= 0xFFFF; ++port) {
        const int number = FindServiceName(static_cast<std::uint16_t>(port), protocol).text.number;
        if (number == 483) continue;
        EXPECT_GT(number, std::exchange(last, number)) << port;
        ports.push_back(port);
    }
    return ports;
}

TEST(ServiceNameTableTest, NamesThesePortsPerProtocol) {
    EXPECT_EQ(NamedPorts(kTcp), (std::vector<int>{21, 22,  23,  25,  43,  53,  67,  68,  70,  79,  80,
                                                  88, 107, 110, 119, 123, 137, 138, 139, 194, 389, 443}));
    EXPECT_EQ(NamedPorts(kUdp),
              (std::vector<int>{22, 53, 67, 68, 70, 80, 88, 107, 110, 123, 137, 138, 139, 194, 389, 443}));
    EXPECT_EQ(NamedPorts(kIcmp), std::vector<int>());
    EXPECT_EQ(FindServiceName(389, kUdp).text.english, "LDAP - Lightweight directory access protocol");
    EXPECT_EQ(FindServiceName(13568, kUdp).text.english, "Unspecified");  // 53 with its bytes swapped
}

}  // namespace
}  // namespace brennvar
