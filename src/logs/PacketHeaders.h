// The headers that a packet may have, each put into words as a group of its own. They are laid down in RFC 791
// (IPv4), 9293 (TCP), 768 (UDP), 792 (ICMP), 826 (ARP).
#pragma once

#include <cstddef>

#include "logs/HeaderLines.h"

namespace brennvar {

inline constexpr std::size_t kEthernetHeaderSize = 6 + 6 + 2;  // destination, source, type
inline constexpr std::uint16_t kEtherTypeIpv4 = 0x0800;
inline constexpr std::uint16_t kEtherTypeArp = 0x0806;

// What a header inside an IPv4 packet needs of the packet.
struct TransportPart {
    PacketBytes bytes;         // from this header to the packet's end, as far as captured
    std::size_t declaredSize;  // how many there were, as the packet says
    // Whether a checksum over all of it can be checked; Right: it can.
    ChecksumState checkable;
    std::uint64_t pseudoSum;  // of addresses, protocol and length (RFC 9293, 3.1)
};

void DescribeEthernet(PacketGroups& packet, const PacketBytes& bytes);
void DescribeArp(PacketGroups& packet, const PacketBytes& bytes);
// Also what is inside.
void DescribeIpv4(PacketGroups& packet, const PacketBytes& bytes);
void DescribeTcp(PacketGroups& packet, const TransportPart& part);
void DescribeUdp(PacketGroups& packet, const TransportPart& part);
void DescribeIcmp(PacketGroups& packet, const TransportPart& part);

}  // namespace brennvar
