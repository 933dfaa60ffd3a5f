// Packets and records of the logs in words. The first byte says what the others are: an IPv4 packet, an ARP packet,
// a traffic log record, a packet log header with its packet.
#include <algorithm>

#include "FuzzInput.h"
#include "logs/LogDetails.h"
#include "logs/PacketText.h"
#include "support/FakeIni.h"

namespace brennvar {
namespace {

// A few headers, of which the first 60 options each may have a line.
constexpr std::size_t kMostGroups = 2 + 4;
constexpr std::size_t kMostLines = 80;

const Language& English() {
    static const Language english(std::make_unique<test::FakeIni>(test::FakeIni::Values()));
    return english;
}

void CheckGroups(const std::vector<DetailsGroup>& groups) {
    fuzz::Require(!groups.empty() && groups.size() <= kMostGroups);
    for (const DetailsGroup& group : groups) {
        fuzz::Require(!group.heading.empty() && !group.lines.empty() && group.lines.size() <= kMostLines);
        for (const DetailsLine& line : group.lines) {
            fuzz::Require(!line.value.empty());
            fuzz::Require(std::none_of(line.value.begin(), line.value.end(),
                                       [](unsigned char c) { return c < 0x20 || c == 0x7F; }));
        }
    }
}

void TryPacket(std::span<const std::byte> bytes, std::uint32_t protocol) {
    CheckGroups(DescribePacketBytes(bytes, protocol, English()));
    fuzz::Require(DumpLines(bytes).size() == (bytes.size() + 15) / 16);
}

void TryRecord(std::span<const std::byte> bytes) {
    const auto record = DecodeRecord<TrafficLogRecord>(bytes);
    if (record)
        CheckGroups(DescribeLogRecord(*record,
                                      {.remoteName = fuzz::TextOfInput(
                                           reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size())},
                                      English())
                        .groups);
}

void TryLoggedPacket(std::span<const std::byte> bytes) {
    const auto header = DecodeRecord<PacketLogHeader>(bytes);
    if (!header) return;
    const auto captured = bytes.subspan(sizeof(PacketLogHeader));
    const DetailsSheet sheet = DescribePacket(*header, captured, {}, English());
    CheckGroups(sheet.groups);
    fuzz::Require(sheet.bytes.size() <= (captured.size() + 15) / 16);
}

}  // namespace
}  // namespace brennvar

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    if (size == 0) return 0;
    // Of its own memory: a step over the end is seen.
    const std::vector<std::byte> bytes(reinterpret_cast<const std::byte*>(data) + 1,
                                       reinterpret_cast<const std::byte*>(data) + size);
    switch (data[0] % 4) {
        case 0: TryPacket(bytes, 6); break;
        case 1: TryPacket(bytes, kLogProtocolArp); break;
        case 2: TryRecord(bytes); break;
        default: TryLoggedPacket(bytes); break;
    }
    return 0;
}
