#include "base/NetworkAddresses_win.h"

#include <cstddef>
#include <cstring>

#include "base/Windows_win.h"
// Needs the types of the headers above.
#include <iphlpapi.h>

namespace brennvar {
namespace {

// More than most machines have: one call then reads the table, and none asks for its size before.
constexpr std::size_t kUsualAddresses = 16;
// The table can grow between the call that tells its size and the one that reads it.
constexpr int kReadAttempts = 4;

std::vector<MIB_IPADDRROW> ReadAddressTable() {
    std::vector<std::byte> buffer(sizeof(MIB_IPADDRTABLE) + kUsualAddresses * sizeof(MIB_IPADDRROW));
    for (int attempt = 0; attempt < kReadAttempts; ++attempt) {
        auto* table = reinterpret_cast<MIB_IPADDRTABLE*>(buffer.data());
        auto size = static_cast<ULONG>(buffer.size());
        const DWORD result = ::GetIpAddrTable(table, &size, FALSE);
        if (result == NO_ERROR) return {table->table, table->table + table->dwNumEntries};
        if (result != ERROR_INSUFFICIENT_BUFFER) return {};
        buffer.resize(size);
    }
    return {};
}

std::uint32_t OperationalStatus(DWORD interfaceIndex) {
    MIB_IFROW row{};
    row.dwIndex = interfaceIndex;
    return ::GetIfEntry(&row) == NO_ERROR ? static_cast<std::uint32_t>(row.dwOperStatus) : 0;
}

}  // namespace

std::vector<InterfaceAddress> ReadInterfaceAddresses() {
    std::vector<InterfaceAddress> addresses;
    for (const MIB_IPADDRROW& row : ReadAddressTable()) {
        addresses.push_back({.address = row.dwAddr, .operationalStatus = OperationalStatus(row.dwIndex)});
    }
    return addresses;
}

Ipv4 FindLocalAddressFor(Ipv4 destination) {
    const std::vector<MIB_IPADDRROW> table = ReadAddressTable();
    // A machine reaches its own addresses from the same address, whichever interface a route names for them.
    for (const MIB_IPADDRROW& row : table) {
        if (row.dwAddr != 0 && row.dwAddr == destination) return destination;
    }
    DWORD interfaceIndex = 0;
    if (::GetBestInterface(destination, &interfaceIndex) != NO_ERROR) return 0;
    for (const MIB_IPADDRROW& row : table) {
        if (row.dwIndex == interfaceIndex && row.dwAddr != 0) return row.dwAddr;
    }
    return 0;
}

}  // namespace brennvar
