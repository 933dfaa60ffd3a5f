#include <array>
#include <utility>

#include "ipc/DriverRecords.h"
#include "logs/PacketHeaders.h"
#include "logs/PortText.h"

namespace brennvar {
namespace {

constexpr std::size_t kLeastHeaderSize = 20;

// From the lowest bit on (RFC 9293, 3.1, and for AE RFC 9768).
constexpr std::array<std::string_view, 9> kFlags = {"FIN", "SYN", "RST", "PSH", "ACK", "URG", "ECE", "CWR", "AE"};
constexpr unsigned kFin = 0x01;
constexpr unsigned kSyn = 0x02;
constexpr unsigned kRst = 0x04;
constexpr unsigned kAck = 0x10;
constexpr unsigned kUrg = 0x20;
constexpr unsigned kFlagBits = 0x1FF;

std::string FlagsText(unsigned flags, const std::string& none) {
    std::string names;
    for (std::size_t bit = 0; bit < kFlags.size(); ++bit) {
        if ((flags & (1U << bit)) != 0) names.append(names.empty() ? "" : ", ").append(kFlags[bit]);
    }
    return HexText(flags, 3) + " (" + (names.empty() ? none : names) + ")";
}

// What the flags do to the connection; no text: nothing.
Text MeaningOf(unsigned flags) {
    if ((flags & kRst) != 0) return Text{1565, "breaks the connection off"};
    if ((flags & kSyn) != 0) {
        return (flags & kAck) != 0 ? Text{1564, "agrees to open the connection"}
                                   : Text{1563, "asks to open a connection"};
    }
    return (flags & kFin) != 0 ? Text{1566, "ends its side of the connection"} : Text{};
}

std::string BlocksText(const PacketBytes& data) {
    std::string text = "SACK";
    for (std::size_t at = 0; at < data.Size(); at += 8) {
        text.append(at == 0 ? ": " : ", ").append(std::to_string(data.Long(at).value_or(0)));
        text.append("-").append(std::to_string(data.Long(at + 4).value_or(0)));
    }
    return text;
}

std::optional<std::string> OptionText(std::uint8_t kind, const PacketBytes& data) {
    switch (kind) {
        case 2:
            if (data.Size() != 2) return std::nullopt;
            return "Maximum segment size (MSS): " + std::to_string(*data.Word(0));
        case 3:
            if (data.Size() != 1) return std::nullopt;
            return "Window scale: " + std::to_string(*data.Byte(0));
        case 4:
            if (!data.IsEmpty()) return std::nullopt;
            return "SACK permitted";
        case 5:
            if (data.IsEmpty() || data.Size() % 8 != 0) return std::nullopt;
            return BlocksText(data);
        case 8:
            if (data.Size() != 8) return std::nullopt;
            return "Timestamps: " + std::to_string(*data.Long(0)) + ", echo " + std::to_string(*data.Long(4));
        default: return std::string();
    }
}

HeaderValue HeaderLength(const HeaderLines& lines, std::size_t size, std::size_t declaredSize) {
    const auto number = static_cast<std::uint32_t>(size);
    if (size < kLeastHeaderSize) return lines.Wrong(number, Text{1545, "less than the shortest header"});
    if (size > declaredSize) return lines.Wrong(number, Text{1556, "more than the packet has"});
    return {std::to_string(number)};
}

void AddFlags(HeaderLines& lines, std::optional<std::uint16_t> field) {
    lines.AddField(Text{1531, "Flags:"}, field, [&](unsigned word) {
        return FlagsText(word & kFlagBits, lines.Say(Text{1514, "none"}));
    });
    const Text meaning = field ? MeaningOf(*field) : Text{};
    if (meaning.number != 0) lines.Add(Text{1562, "Meaning:"}, lines.Say(meaning));
}

// A field that counts only while its flag is set.
void AddFlagged(HeaderLines& lines, const Text& label, std::optional<std::uint32_t> number, bool isUsed) {
    lines.AddField(label, number, [&](std::uint32_t known) -> HeaderValue {
        if (isUsed) return {std::to_string(known)};
        return {std::to_string(known) + ", " + lines.Say(Text{1543, "not used"}), Tone::Muted};
    });
}

}  // namespace

void DescribeTcp(PacketGroups& packet, const TransportPart& part) {
    const PacketBytes& bytes = part.bytes;
    HeaderLines lines(packet, Text{1521, "TCP header"}, bytes);
    if (bytes.IsEmpty()) return;
    const std::optional<std::uint16_t> lengthAndFlags = bytes.Word(12);
    const unsigned flags = lengthAndFlags.value_or(kAck | kUrg);
    const std::size_t headerSize = (bytes.Byte(12).value_or(0) >> 4) * std::size_t{4};
    AddPorts(lines, kProtocolTcp);
    lines.AddNumber(Text{1558, "Sequence number:"}, bytes.Long(4));
    AddFlagged(lines, Text{1559, "Acknowledgement number:"}, bytes.Long(8), (flags & kAck) != 0);
    lines.AddField(Text{1527, "Header length (bytes):"}, bytes.Byte(12),
                   [&](unsigned) { return HeaderLength(lines, headerSize, part.declaredSize); });
    AddFlags(lines, lengthAndFlags);
    lines.AddNumber(Text{1560, "Window:"}, bytes.Word(14));
    lines.AddChecksum(bytes.Word(16), part.checkable == ChecksumState::Right
                                          ? CheckInternetChecksum(bytes, 16, part.pseudoSum)
                                          : Checksum{part.checkable});
    AddFlagged(lines, Text{1561, "Urgent pointer:"}, bytes.Word(18), (flags & kUrg) != 0);
    if (headerSize < kLeastHeaderSize || headerSize > part.declaredSize) return;
    lines.AddOptions(kLeastHeaderSize, headerSize - kLeastHeaderSize, &OptionText);
    lines.AddNumber(Text{1553, "Data (bytes):"}, static_cast<std::uint32_t>(part.declaredSize - headerSize));
}

}  // namespace brennvar
