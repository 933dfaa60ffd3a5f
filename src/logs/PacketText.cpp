#include "logs/PacketText.h"

#include <optional>
#include <utility>

#include "logs/LogRecords.h"
#include "logs/PacketHeaders.h"

namespace brennvar {
namespace {

constexpr std::size_t kDumpWidth = 16;  // bytes a line

bool BeginsAsIpv4(const PacketBytes& bytes) {
    const unsigned first = bytes.Byte(0).value_or(0);
    return first >> 4 == 4 && (first & 0xF) * 4 >= 20;
}

bool HasRightIpv4Checksum(const PacketBytes& bytes) {
    const std::optional<PacketBytes> header = bytes.Piece(0, (bytes.Byte(0).value_or(0) & 0xFU) * std::size_t{4});
    return header && CheckInternetChecksum(*header, 10).state == ChecksumState::Right;
}

bool BeginsAsArp(const PacketBytes& bytes) {
    return bytes.Word(0) == std::uint16_t{1} && bytes.Word(2) == kEtherTypeIpv4;
}

// The type in the Ethernet header before the packet; nothing: there is no such header.
std::optional<std::uint16_t> FindEtherType(const PacketBytes& bytes, bool isArp) {
    const std::optional<std::uint16_t> type = bytes.Word(kEthernetHeaderSize - 2);
    if (!type || (*type != kEtherTypeIpv4 && *type != kEtherTypeArp)) return std::nullopt;
    if (isArp) return BeginsAsArp(bytes) ? std::nullopt : type;
    if (!BeginsAsIpv4(bytes)) return type;
    const PacketBytes behind = bytes.From(kEthernetHeaderSize);
    const bool isIpv4Behind = type == kEtherTypeIpv4 && BeginsAsIpv4(behind) && HasRightIpv4Checksum(behind);
    return isIpv4Behind && !HasRightIpv4Checksum(bytes) ? type : std::nullopt;
}

}  // namespace

std::vector<DetailsGroup> DescribePacketBytes(std::span<const std::byte> captured, std::uint32_t logProtocol,
                                              const Language& language) {
    std::vector<DetailsGroup> groups;
    PacketGroups packet{.language = language, .groups = groups};
    PacketBytes bytes(captured);
    bool isArp = logProtocol == kLogProtocolArp;
    if (const std::optional<std::uint16_t> type = FindEtherType(bytes, isArp)) {
        DescribeEthernet(packet, bytes.First(kEthernetHeaderSize));
        bytes = bytes.From(kEthernetHeaderSize);
        isArp = *type == kEtherTypeArp;
    }
    if (isArp) {
        DescribeArp(packet, bytes);
    } else {
        DescribeIpv4(packet, bytes);
    }
    // Of a packet that was quoted for less than its first field.
    std::erase_if(groups, [](const DetailsGroup& group) { return group.lines.empty(); });
    return groups;
}

std::vector<std::string> DumpLines(std::span<const std::byte> bytes) {
    const PacketBytes all(bytes);
    std::vector<std::string> lines;
    lines.reserve(bytes.size() / kDumpWidth + 1);
    for (std::size_t at = 0; at < bytes.size(); at += kDumpWidth) {
        const PacketBytes row = all.From(at).First(kDumpWidth);
        // Without the "0x".
        std::string line = HexText(static_cast<std::uint32_t>(at), 4).substr(2) + "  " + HexBytesText(row);
        // Where the letters of a short last row begin as well.
        line.append(3 * (kDumpWidth - row.Size()) + 2, ' ').append("|");
        for (const std::byte byte : row.All()) {
            const auto letter = std::to_integer<unsigned char>(byte);
            line += letter >= 0x20 && letter < 0x7F ? static_cast<char>(letter) : '.';
        }
        lines.push_back(std::move(line) + "|");
    }
    return lines;
}

}  // namespace brennvar
