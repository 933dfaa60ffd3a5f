#include "logs/PacketHeaders.h"

namespace brennvar {
namespace {

constexpr std::size_t kHeaderSize = 8;

enum IcmpType : std::uint8_t {
    kEchoReply = 0,
    kUnreachable = 3,
    kSourceQuench = 4,
    kRedirect = 5,
    kEchoRequest = 8,
    kTimeExceeded = 11,
    kParameterProblem = 12,
};
constexpr std::uint8_t kFragmentationNeeded = 4;  // a code of kUnreachable

// Rare ones keep the names of the standards (IANA, ICMP parameters).
std::string TypeName(const HeaderLines& lines, std::uint8_t type) {
    switch (type) {
        case kEchoReply: return lines.Say(Text{1574, "echo reply"});
        case kUnreachable: return lines.Say(Text{1575, "destination unreachable"});
        case kSourceQuench: return "Source quench";
        case kRedirect: return lines.Say(Text{1576, "redirect"});
        case kEchoRequest: return lines.Say(Text{1577, "echo request"});
        case 9: return "Router advertisement";
        case 10: return "Router solicitation";
        case kTimeExceeded: return lines.Say(Text{1578, "time exceeded"});
        case kParameterProblem: return lines.Say(Text{1579, "parameter problem"});
        case 13: return "Timestamp";
        case 14: return "Timestamp reply";
        case 17: return "Address mask request";
        case 18: return "Address mask reply";
        default: return lines.Say(Text{1114, "unknown"});
    }
}

std::string UnreachableName(const HeaderLines& lines, std::uint8_t code) {
    switch (code) {
        case 0: return lines.Say(Text{1580, "network unreachable"});
        case 1: return lines.Say(Text{1581, "host unreachable"});
        case 2: return lines.Say(Text{1582, "protocol unreachable"});
        case 3: return lines.Say(Text{1583, "port unreachable"});
        case kFragmentationNeeded: return lines.Say(Text{1584, "fragmentation needed"});
        case 5: return "Source route failed";
        case 6: return "Destination network unknown";
        case 7: return "Destination host unknown";
        case 8: return "Source host isolated";
        case 11: return "Network unreachable for type of service";
        case 12: return "Host unreachable for type of service";
        case 9:
        case 10:
        case 13: return lines.Say(Text{1585, "prohibited by a filter"});
        case 14: return "Host precedence violation";
        case 15: return "Precedence cutoff in effect";
        default: return {};
    }
}

std::string CodeName(const HeaderLines& lines, std::uint8_t type, std::uint8_t code) {
    switch (type) {
        case kUnreachable: return UnreachableName(lines, code);
        case kTimeExceeded:
            if (code == 0) return lines.Say(Text{1586, "too many hops"});
            return code == 1 ? lines.Say(Text{1587, "fragments did not arrive in time"}) : std::string();
        case kRedirect:
            switch (code) {
                case 0: return "Network";
                case 1: return "Host";
                case 2: return "Type of service and network";
                case 3: return "Type of service and host";
                default: return {};
            }
        default: return {};
    }
}

bool HasIdentifier(std::uint8_t type) {
    return type == kEchoReply || type == kEchoRequest || type == 13 || type == 14 || type == 17 || type == 18;
}

bool QuotesAPacket(std::uint8_t type) {
    return type == kUnreachable || type == kSourceQuench || type == kRedirect || type == kTimeExceeded ||
           type == kParameterProblem;
}

// The four bytes behind the checksum mean something else for each type.
void AddRest(HeaderLines& lines, std::uint8_t type) {
    const PacketBytes& bytes = lines.Bytes();
    if (HasIdentifier(type)) {
        lines.AddNumber(Text{1570, "Identifier:"}, bytes.Word(4));
        lines.AddNumber(Text{1558, "Sequence number:"}, bytes.Word(6));
    }
    if (type == kRedirect) lines.AddAddress(Text{1571, "Gateway:"}, bytes.Address(4));
    if (type == kParameterProblem) lines.AddNumber(Text{1573, "Pointer:"}, bytes.Byte(4));
    if (type == kUnreachable && bytes.Byte(1) == kFragmentationNeeded) {
        lines.AddNumber(Text{1572, "Largest packet of the next hop (bytes):"}, bytes.Word(6));
    }
}

}  // namespace

void DescribeIcmp(PacketGroups& packet, const TransportPart& part) {
    const PacketBytes& bytes = part.bytes;
    HeaderLines lines(packet, Text{1523, "ICMP header"}, bytes);
    const std::optional<std::uint8_t> type = bytes.Byte(0);
    if (!type) return;
    lines.Add(Text{1588, "Type:"}, NumberAndName(*type, TypeName(lines, *type)));
    lines.AddField(Text{1569, "Code:"}, bytes.Byte(1),
                   [&](std::uint8_t code) { return NumberAndName(code, CodeName(lines, *type, code)); });
    lines.AddChecksum(bytes.Word(2), part.checkable == ChecksumState::Right ? CheckInternetChecksum(bytes, 2)
                                                                            : Checksum{part.checkable});
    AddRest(lines, *type);
    const PacketBytes quote = bytes.From(kHeaderSize);
    if (!QuotesAPacket(*type)) {
        if (part.declaredSize >= kHeaderSize) {
            lines.AddNumber(Text{1553, "Data (bytes):"},
                            static_cast<std::uint32_t>(part.declaredSize - kHeaderSize));
        }
        return;
    }
    // What a quoted message quotes is not shown: each quotes the first bytes only, and a false one could go on.
    if (packet.isQuoted || quote.IsEmpty()) return;
    PacketGroups quoted{.language = packet.language, .groups = packet.groups, .isQuoted = true};
    DescribeIpv4(quoted, quote);
}

}  // namespace brennvar
