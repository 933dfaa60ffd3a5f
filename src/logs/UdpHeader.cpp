#include "ipc/DriverRecords.h"
#include "logs/PacketHeaders.h"
#include "logs/PortText.h"

namespace brennvar {
namespace {

constexpr std::size_t kHeaderSize = 8;

HeaderValue LengthValue(const HeaderLines& lines, std::uint16_t size, std::size_t declaredSize) {
    if (size < kHeaderSize) return lines.Wrong(size, Text{1545, "less than the shortest header"});
    if (size > declaredSize) return lines.Wrong(size, Text{1556, "more than the packet has"});
    return {std::to_string(size)};
}

// The length of the header counts for the checksum, and not that of the packet around it (RFC 768).
Checksum CheckUdp(const TransportPart& part, std::size_t size) {
    if (part.bytes.Word(6) == std::uint16_t{0}) return {ChecksumState::NotUsed};
    if (part.checkable != ChecksumState::Right) return {part.checkable};
    if (size < kHeaderSize || size > part.declaredSize) return {ChecksumState::WrongLength};
    const std::uint64_t pseudoSum = part.pseudoSum - part.declaredSize + size;
    Checksum checksum = CheckInternetChecksum(part.bytes.First(size), 6, pseudoSum);
    // Zero says that there is none, so its other form is sent.
    if (checksum.expected == 0) checksum.expected = 0xFFFF;
    return checksum;
}

}  // namespace

void DescribeUdp(PacketGroups& packet, const TransportPart& part) {
    const PacketBytes& bytes = part.bytes;
    HeaderLines lines(packet, Text{1522, "UDP header"}, bytes);
    if (bytes.IsEmpty()) return;
    AddPorts(lines, kProtocolUdp);
    const std::optional<std::uint16_t> size = bytes.Word(4);
    // The first of several fragments has only some of the bytes.
    const std::size_t most = part.checkable == ChecksumState::IsFragment ? 0xFFFF : part.declaredSize;
    lines.AddField(Text{1568, "Length (bytes):"}, size,
                   [&](std::uint16_t known) { return LengthValue(lines, known, most); });
    lines.AddChecksum(bytes.Word(6), CheckUdp(part, size.value_or(0)));
    if (size && *size >= kHeaderSize && *size <= most) {
        lines.AddNumber(Text{1553, "Data (bytes):"}, *size - static_cast<std::uint32_t>(kHeaderSize));
    }
}

}  // namespace brennvar
