#include "service/MachineTables_win.h"

#include <cstddef>
#include <set>

#include "service/TcpStates.h"
// Needs what Windows_win.h brings.
#include <iphlpapi.h>

namespace brennvar::standin {
namespace {

// Asks for the size first; the table may grow between the two calls.
template <class Read>
std::vector<std::byte> ReadTable(const Read& read) {
    std::vector<std::byte> buffer;
    DWORD size = 0;
    DWORD result = read(nullptr, size);
    while (result == ERROR_INSUFFICIENT_BUFFER) {
        buffer.resize(size);
        result = read(buffer.data(), size);
    }
    if (result != NO_ERROR) buffer.clear();
    return buffer;
}

// The tables' ports are DWORDs, of which the low half is the port in network order.
std::uint16_t Port(DWORD port) {
    return static_cast<std::uint16_t>(port);
}

void AddTcp(Tables& tables) {
    const auto buffer = ReadTable([](void* table, DWORD& size) {
        return ::GetExtendedTcpTable(table, &size, FALSE, AF_INET, TCP_TABLE_OWNER_PID_ALL, 0);
    });
    if (buffer.empty()) return;
    const auto* table = reinterpret_cast<const MIB_TCPTABLE_OWNER_PID*>(buffer.data());
    const std::span rows(table->table, table->dwNumEntries);
    std::set<std::uint16_t> listening;
    for (const auto& row : rows) {
        if (row.dwState != MIB_TCP_STATE_LISTEN) continue;
        listening.insert(Port(row.dwLocalPort));
        tables.listeners.push_back({kProtocolTcp, row.dwLocalAddr, Port(row.dwLocalPort), row.dwOwningPid});
    }
    for (const auto& row : rows) {
        if (row.dwState == MIB_TCP_STATE_LISTEN) continue;
        const std::uint16_t localPort = Port(row.dwLocalPort);
        // What ends at a port that somebody listens on has been accepted there.
        tables.connections.push_back({DriverStateOf(row.dwState, listening.contains(localPort)), row.dwLocalAddr,
                                      localPort, row.dwRemoteAddr, Port(row.dwRemotePort), row.dwOwningPid, 0, 0});
    }
}

void AddUdp(Tables& tables) {
    const auto buffer = ReadTable([](void* table, DWORD& size) {
        return ::GetExtendedUdpTable(table, &size, FALSE, AF_INET, UDP_TABLE_OWNER_PID, 0);
    });
    if (buffer.empty()) return;
    const auto* table = reinterpret_cast<const MIB_UDPTABLE_OWNER_PID*>(buffer.data());
    for (const auto& row : std::span(table->table, table->dwNumEntries))
        tables.listeners.push_back({kProtocolUdp, row.dwLocalAddr, Port(row.dwLocalPort), row.dwOwningPid});
}

}  // namespace

Tables ReadMachineTables() {
    Tables tables;
    AddTcp(tables);
    AddUdp(tables);
    return tables;
}

TrafficTotals MachineTotals::Read() {
    const auto buffer = ReadTable(
        [](void* table, DWORD& size) { return ::GetIfTable(static_cast<MIB_IFTABLE*>(table), &size, FALSE); });
    if (buffer.empty()) return m_totals;
    const auto* table = reinterpret_cast<const MIB_IFTABLE*>(buffer.data());
    for (const MIB_IFROW& row : std::span(table->table, table->dwNumEntries)) {
        if (row.dwType == MIB_IF_TYPE_LOOPBACK) continue;
        Counters& last = m_last[row.dwIndex];
        m_totals.bytesIn +=
            row.dwInOctets - last.in;  // 32-bit difference: right even when the counter started over
        m_totals.bytesOut += row.dwOutOctets - last.out;
        last = {row.dwInOctets, row.dwOutOctets};
    }
    return m_totals;
}

}  // namespace brennvar::standin
