#include "logs/ServiceNameTable.h"

#include "ipc/DriverRecords.h"

namespace brennvar {
namespace {

constexpr ServiceName kServiceNames[] = {
    {21, false, Text{461, "FTP - File transfer"}},
    {22, true, Text{462, "SSH - Remote login"}},
    {23, false, Text{463, "TELNET - Telnet"}},
    {25, false, Text{464, "SMTP - E-Mail sending"}},
    {43, false, Text{465, "WHOIS - WHOIS lookup"}},
    {53, true, Text{466, "DNS - Domain name resolution"}},
    {67, true, Text{467, "BOOTPS - BOOTP server"}},
    {68, true, Text{468, "BOOTPC - BOOTP client"}},
    {70, true, Text{469, "GOPHER - Internet Gopher"}},
    {79, false, Text{470, "FINGER - Finger"}},
    {80, true, Text{471, "HTTP - Web browsing"}},
    {88, true, Text{472, "KERBEROS - Kerberos"}},
    {107, true, Text{473, "RTELNET - Remote telnet"}},
    {110, true, Text{474, "POP3 - E-Mail checking"}},
    {119, false, Text{475, "NNTP - News transfer"}},
    {123, true, Text{476, "NTP - Time synchronisation"}},
    {137, true, Text{477, "NETBIOS - Netbios name service"}},
    {138, true, Text{478, "NETBIOS - Netbios datagram service"}},
    {139, true, Text{479, "NETBIOS - Netbios session service"}},
    {194, true, Text{480, "IRC - Internet relay chat"}},
    {389, true, Text{481, "LDAP - Lightweight directory access protocol"}},
    {443, true, Text{482, "HTTPS - Secure web connection"}},
};
constexpr ServiceName kUnspecified = {0, false, Text{483, "Unspecified"}};

}  // namespace

std::span<const ServiceName> ServiceNames() {
    return kServiceNames;
}

const ServiceName& FindServiceName(std::uint16_t remotePort, std::uint32_t protocol) {
    for (const ServiceName& row : kServiceNames) {
        if (row.remotePort != remotePort) continue;
        // A port has one row: with the wrong protocol it means nothing.
        const bool fits = protocol == kProtocolTcp || (row.alsoUdp && protocol == kProtocolUdp);
        return fits ? row : kUnspecified;
    }
    return kUnspecified;
}

}  // namespace brennvar
