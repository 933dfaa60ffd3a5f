#include "logs/HeaderLines.h"

#include <cstdio>
#include <utility>

namespace brennvar {
namespace {

constexpr Text kMissing{1515, "missing (not captured)"};
constexpr Text kOption{1537, "Option:"};

// Both protocols have these two options of a single byte.
constexpr std::uint8_t kEndOfOptions = 0;
constexpr std::uint8_t kNoOperation = 1;

std::uint16_t Fold(std::uint64_t sum) {
    while (sum > 0xFFFF) sum = (sum & 0xFFFF) + (sum >> 16);
    return static_cast<std::uint16_t>(sum);
}

Text WordsOf(ChecksumState state) {
    switch (state) {
        case ChecksumState::Right: return Text{1538, "right"};
        case ChecksumState::Wrong: return Text{1539, "wrong, right would be"};
        case ChecksumState::NotUsed: return Text{1543, "not used"};
        case ChecksumState::BytesMissing: return Text{1540, "cannot be checked, bytes are missing"};
        case ChecksumState::IsFragment: return Text{1541, "cannot be checked, this is a fragment"};
        case ChecksumState::WrongLength: break;
    }
    return Text{1542, "cannot be checked, a length is wrong"};
}

}  // namespace

std::uint64_t SumOfWords(const PacketBytes& bytes) {
    std::uint64_t sum = 0;
    for (std::size_t at = 0; at < bytes.Size(); at += 2) {
        // An odd last byte counts as if a zero stood behind it.
        sum += bytes.Word(at).value_or(static_cast<std::uint16_t>(bytes.Byte(at).value_or(0) << 8));
    }
    return sum;
}

Checksum CheckInternetChecksum(const PacketBytes& bytes, std::size_t fieldOffset, std::uint64_t pseudoSum) {
    const std::optional<std::uint16_t> field = bytes.Word(fieldOffset);
    if (!field) return {ChecksumState::BytesMissing};
    const std::uint64_t sum = SumOfWords(bytes) + pseudoSum;
    if (Fold(sum) == 0xFFFF) return {ChecksumState::Right};
    return {ChecksumState::Wrong, static_cast<std::uint16_t>(~Fold(sum - *field))};
}

std::string HexText(std::uint32_t number, int digits) {
    char text[2 + 8 + 1];
    (void)std::snprintf(text, sizeof(text), "0x%0*x", digits, number);
    return text;
}

std::string HexBytesText(const PacketBytes& bytes, char between) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string text;
    for (const std::byte byte : bytes.All()) {
        if (!text.empty()) text += between;
        text += kDigits[std::to_integer<unsigned>(byte) >> 4];
        text += kDigits[std::to_integer<unsigned>(byte) & 0xF];
    }
    return text;
}

std::string NumberAndName(std::uint32_t number, std::string_view name) {
    std::string text = std::to_string(number);
    if (!name.empty()) text.append(" (").append(name).append(")");
    return text;
}

HeaderLines::HeaderLines(PacketGroups& packet, const Text& heading, const PacketBytes& bytes)
    : m_packet(packet), m_bytes(bytes), m_group(packet.groups.size()) {
    std::string text = Say(heading);
    if (packet.isQuoted) text = Say(Text{1525, "Quoted packet:"}) + " " + text;
    packet.groups.push_back({std::move(text), {}});
    if (bytes.IsEmpty()) AddRemark(kMissing);
}

void HeaderLines::AddLine(DetailsLine line) {
    m_packet.groups[m_group].lines.push_back(std::move(line));
}

void HeaderLines::Add(const Text& label, std::string value, Tone tone) {
    AddLine({Say(label), std::move(value), tone});
}

void HeaderLines::AddRemark(const Text& remark) {
    AddLine({{}, Say(remark), Tone::Muted});
}

void HeaderLines::AddNumber(const Text& label, std::optional<std::uint32_t> number) {
    AddField(label, number, [](std::uint32_t known) { return std::to_string(known); });
}

void HeaderLines::AddAddress(const Text& label, std::optional<Ipv4> address) {
    AddField(label, address, &FormatIpv4);
}

void HeaderLines::AddMissing(const Text& label) {
    if (!m_packet.isQuoted) Add(label, Say(kMissing), Tone::Muted);
}

void HeaderLines::AddChecksum(std::optional<std::uint16_t> field, const Checksum& checksum) {
    AddField(Text{1534, "Checksum:"}, field, [&](std::uint16_t known) {
        HeaderValue value{HexText(known, 4) + ", " + Say(WordsOf(checksum.state))};
        if (checksum.state == ChecksumState::Wrong) {
            value.text.append(" ").append(HexText(checksum.expected, 4));
            value.tone = Tone::Deny;
        }
        return value;
    });
}

HeaderValue HeaderLines::Wrong(std::uint32_t number, const Text& reason) const {
    return {std::to_string(number) + ", " + Say(reason), Tone::Deny};
}

void HeaderLines::AddOptions(std::size_t offset, std::size_t declaredSize, OptionText describe) {
    const PacketBytes options = m_bytes.From(offset).First(declaredSize);
    std::size_t at = 0;
    while (at < options.Size()) {
        const std::uint8_t kind = *options.Byte(at);
        if (kind == kEndOfOptions) {
            Add(kOption, "End of options");
            return;
        }
        if (kind == kNoOperation) {
            Add(kOption, "No operation");
            ++at;
            continue;
        }
        const std::optional<std::uint8_t> length = options.Byte(at + 1);
        if (!length && at + 1 < declaredSize) break;
        // The length counts the two bytes of itself and the kind.
        if (!length || *length < 2 || *length > declaredSize - at) {
            Add(kOption, Wrong(kind, Text{1555, "its length is wrong"}));
            return;
        }
        const std::optional<PacketBytes> data = options.Piece(at + 2, *length - 2U);
        if (!data) break;
        if (const std::optional<std::string> text = describe(kind, *data); !text) {
            Add(kOption, Wrong(kind, Text{1555, "its length is wrong"}));
        } else if (text->empty()) {
            std::string unknown = NumberAndName(kind, Say(Text{1114, "unknown"}));
            if (!data->IsEmpty()) unknown.append(": ").append(HexBytesText(*data));
            Add(kOption, std::move(unknown));
        } else {
            Add(kOption, *text);
        }
        at += *length;
    }
    if (at < declaredSize) AddMissing(kOption);
}

}  // namespace brennvar
