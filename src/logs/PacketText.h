// The bytes of a captured packet in plain words, and as a dump. Any bytes may be given: what a header says of
// lengths is told, never believed, and a field beyond the bytes is said to be missing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "config/DetailsSheet.h"
#include "config/Language.h"

namespace brennvar {

// A group for each header. logProtocol is the log's code: 806 is an ARP packet, every other an IPv4 packet. Either
// may stand behind an Ethernet header, which is recognised as follows.
// - A packet that begins as its kind does (version 4 and a header length of 20 or more; hardware type Ethernet and
//   protocol type IPv4) has none, unless it can be read in both ways and only what stands behind an Ethernet header
//   has a right IPv4 checksum: the first bytes of an Ethernet address may be any.
// - Else a packet with the type of IPv4 or ARP in bytes 12 and 13 has one, and is what the type says.
// - Else it has none.
[[nodiscard]] std::vector<DetailsGroup> DescribePacketBytes(std::span<const std::byte> captured,
                                                            std::uint32_t logProtocol, const Language& language);

// "0000  45 00 00 3c 1c 46 ...  |E..<.F...|", 16 bytes a line.
[[nodiscard]] std::vector<std::string> DumpLines(std::span<const std::byte> bytes);

}  // namespace brennvar
