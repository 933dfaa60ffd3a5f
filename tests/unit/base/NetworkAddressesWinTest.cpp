#include "base/NetworkAddresses_win.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/Windows_win.h"
// Needs the types of the header above.
#include <iphlpapi.h>

namespace brennvar {
namespace {

constexpr Ipv4 kLoopback = 0x0100007F;

TEST(NetworkAddressesWinTest, ContainsTheLoopbackAddressInOperation) {
    const auto addresses = ReadInterfaceAddresses();
    const InterfaceAddress loopback{.address = kLoopback, .operationalStatus = kInterfaceOperational};
    EXPECT_NE(std::find(addresses.begin(), addresses.end(), loopback), addresses.end());
}

TEST(NetworkAddressesWinTest, FindsTheLoopbackAddressForItself) {
    EXPECT_EQ(FindLocalAddressFor(kLoopback), kLoopback);
}

TEST(NetworkAddressesWinTest, FindsOneOfOurOwnAddressesForAnotherMachine) {
    constexpr Ipv4 kElsewhere = 0x017100CB;  // 203.0.113.1, reserved for documentation
    DWORD interfaceIndex = 0;
    if (::GetBestInterface(kElsewhere, &interfaceIndex) != NO_ERROR) GTEST_SKIP() << "no route to elsewhere";
    const Ipv4 address = FindLocalAddressFor(kElsewhere);
    EXPECT_NE(address, kElsewhere);
    const auto addresses = ReadInterfaceAddresses();
    EXPECT_EQ(std::count_if(addresses.begin(), addresses.end(),
                            [&](const InterfaceAddress& entry) { return entry.address == address; }),
              1);
}

}  // namespace
}  // namespace brennvar
