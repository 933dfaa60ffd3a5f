#include <utility>

#include "ipc/DriverRecords.h"
#include "logs/PacketHeaders.h"

namespace brennvar {
namespace {

constexpr std::size_t kLeastHeaderSize = 20;
constexpr unsigned kFlagDontFragment = 0x4000;
constexpr unsigned kFlagMoreFragments = 0x2000;
constexpr unsigned kFlagReserved = 0x8000;
constexpr unsigned kFlagShift = 13;
constexpr unsigned kFragmentOffsetBits = 0x1FFF;
constexpr unsigned kFragmentUnit = 8;  // bytes that the offset counts in

struct NumberName {
    std::uint8_t number;
    std::string_view name;
};
// Names of the field are not translated. By IANA's registries.
constexpr NumberName kProtocols[] = {{0, "HOPOPT"},  {1, "ICMP"},   {2, "IGMP"},  {4, "IP-in-IP"}, {6, "TCP"},
                                     {17, "UDP"},    {41, "IPv6"},  {47, "GRE"},  {50, "ESP"},     {51, "AH"},
                                     {58, "ICMPv6"}, {88, "EIGRP"}, {89, "OSPF"}, {103, "PIM"},    {132, "SCTP"}};
constexpr NumberName kOptions[] = {
    {7, "Record route"},         {68, "Timestamp"},          {82, "Traceroute"},           {130, "Security"},
    {131, "Loose source route"}, {136, "Stream identifier"}, {137, "Strict source route"}, {148, "Router alert"}};
// The upper six bits of the type of service that have a name of their own (RFC 2597, 3246); multiples of eight are
// CS0 to CS7.
constexpr NumberName kServiceClasses[] = {{10, "AF11"}, {12, "AF12"}, {14, "AF13"}, {18, "AF21"}, {20, "AF22"},
                                          {22, "AF23"}, {26, "AF31"}, {28, "AF32"}, {30, "AF33"}, {34, "AF41"},
                                          {36, "AF42"}, {38, "AF43"}, {46, "EF"}};
constexpr std::string_view kCongestion[] = {"Not-ECT", "ECT(1)", "ECT(0)", "CE"};  // RFC 3168, 5

template <std::size_t Count>
std::string_view NameIn(const NumberName (&names)[Count], std::uint8_t number) {
    for (const NumberName& row : names) {
        if (row.number == number) return row.name;
    }
    return {};
}

std::string ServiceTypeText(std::uint8_t type) {
    const auto serviceClass = static_cast<std::uint8_t>(type >> 2);
    std::string name(NameIn(kServiceClasses, serviceClass));
    if (name.empty() && serviceClass % 8 == 0) name = "CS" + std::to_string(serviceClass / 8);
    if (name.empty()) name = "DSCP " + std::to_string(serviceClass);
    return HexText(type, 2) + " (" + name + ", " + std::string(kCongestion[type & 3]) + ")";
}

// Addresses of a route, four bytes each behind the pointer.
std::string RouteText(const PacketBytes& data, std::size_t count) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) {
        const std::optional<Ipv4> address = data.Address(1 + 4 * index);
        if (!address) break;
        text.append(index == 0 ? ": " : ", ").append(FormatIpv4(*address));
    }
    return text;
}

std::optional<std::string> OptionText(std::uint8_t kind, const PacketBytes& data) {
    constexpr std::uint8_t kRecordRoute = 7;
    constexpr std::uint8_t kLooseRoute = 131;
    constexpr std::uint8_t kStrictRoute = 137;
    std::string text(NameIn(kOptions, kind));
    if (text.empty()) return text;
    if (kind != kRecordRoute && kind != kLooseRoute && kind != kStrictRoute) {
        return data.IsEmpty() ? text : text + ": " + HexBytesText(data);
    }
    // A pointer and whole addresses. The pointer counts from 1 at the option's kind: 4 is the first address.
    if (data.Size() % 4 != 1) return std::nullopt;
    std::size_t count = data.Size() / 4;
    // A recorded route is filled as far as the pointer says.
    if (kind == kRecordRoute)
        count = std::min<std::size_t>(count, *data.Byte(0) / 4U - (*data.Byte(0) >= 4 ? 1 : 0));
    return text + RouteText(data, count);
}

class Ipv4Header {
public:
    Ipv4Header(PacketGroups& packet, const PacketBytes& bytes)
        : m_packet(packet), m_lines(packet, Text{1520, "IPv4 header"}, bytes) {}
    void Describe();

private:
    [[nodiscard]] const PacketBytes& Bytes() const { return m_lines.Bytes(); }
    [[nodiscard]] bool HasSoundHeaderSize() const { return m_headerSize >= kLeastHeaderSize; }
    void AddFields();
    void AddTotalLength();
    void AddFragment();
    [[nodiscard]] Checksum CheckHeader() const;
    [[nodiscard]] TransportPart Inside() const;
    void DescribeInside();

    PacketGroups& m_packet;
    HeaderLines m_lines;
    std::size_t m_headerSize = 0;
    std::size_t m_totalSize = 0;  // as the packet says, or what was captured where that is impossible
    ChecksumState m_checkable = ChecksumState::BytesMissing;
    unsigned m_fragment = 0;  // flags and offset
};

void Ipv4Header::Describe() {
    const std::optional<std::uint8_t> first = Bytes().Byte(0);
    if (!first) return;
    constexpr Text kCannotBeRead{1551, "What follows cannot be read."};
    const unsigned version = *first >> 4;
    if (version != 4) {
        m_lines.Add(Text{1365, "Version:"}, m_lines.Wrong(version, Text{1544, "wrong"}));
        m_lines.AddRemark(kCannotBeRead);
        return;
    }
    m_lines.AddNumber(Text{1365, "Version:"}, version);
    m_headerSize = (*first & 0xFU) * std::size_t{4};
    AddFields();
    if (!HasSoundHeaderSize()) {
        m_lines.AddRemark(kCannotBeRead);
        return;
    }
    m_lines.AddOptions(kLeastHeaderSize, m_headerSize - kLeastHeaderSize, &OptionText);
    DescribeInside();
}

void Ipv4Header::AddFields() {
    constexpr Text kHeaderLength{1527, "Header length (bytes):"};
    const auto headerSize = static_cast<std::uint32_t>(m_headerSize);
    if (HasSoundHeaderSize()) {
        m_lines.AddNumber(kHeaderLength, headerSize);
    } else {
        m_lines.Add(kHeaderLength, m_lines.Wrong(headerSize, Text{1545, "less than the shortest header"}));
    }
    m_lines.AddField(Text{1528, "Type of service:"}, Bytes().Byte(1), &ServiceTypeText);
    AddTotalLength();
    m_lines.AddField(Text{1530, "Identification:"}, Bytes().Word(4),
                     [](std::uint16_t id) { return NumberAndName(id, HexText(id, 4)); });
    AddFragment();
    m_lines.AddNumber(Text{1533, "Time to live:"}, Bytes().Byte(8));
    m_lines.AddField(Text{484, "Protocol:"}, Bytes().Byte(9),
                     [](std::uint8_t protocol) { return NumberAndName(protocol, NameIn(kProtocols, protocol)); });
    m_lines.AddChecksum(Bytes().Word(10), CheckHeader());
    m_lines.AddAddress(Text{1535, "Source address:"}, Bytes().Address(12));
    m_lines.AddAddress(Text{1536, "Destination address:"}, Bytes().Address(16));
}

void Ipv4Header::AddTotalLength() {
    m_totalSize = Bytes().Size();
    m_lines.AddField(Text{1529, "Total length (bytes):"}, Bytes().Word(2), [&](std::uint16_t size) -> HeaderValue {
        if (size < m_headerSize) {
            m_checkable = ChecksumState::WrongLength;
            return m_lines.Wrong(size, Text{1546, "less than the header"});
        }
        m_totalSize = size;
        if (size <= Bytes().Size()) {
            m_checkable = ChecksumState::Right;
            return {std::to_string(size)};
        }
        if (m_packet.isQuoted) return {std::to_string(size)};
        return {std::to_string(size) + ", " + m_lines.Say(Text{1547, "more than was captured"}), Tone::Muted};
    });
}

void Ipv4Header::AddFragment() {
    const std::optional<std::uint16_t> field = Bytes().Word(6);
    m_fragment = field.value_or(0);
    m_lines.AddField(Text{1531, "Flags:"}, field, [&](unsigned flags) {
        std::string names;
        const auto name = [&](unsigned flag, const Text& text) {
            if ((flags & flag) != 0) names.append(names.empty() ? "" : ", ").append(m_lines.Say(text));
        };
        name(kFlagReserved, Text{1550, "reserved bit"});
        name(kFlagDontFragment, Text{1548, "do not fragment"});
        name(kFlagMoreFragments, Text{1549, "more fragments follow"});
        return NumberAndName(flags >> kFlagShift, names.empty() ? m_lines.Say(Text{1514, "none"}) : names);
    });
    m_lines.AddField(Text{1532, "Fragment offset (bytes):"}, field,
                     [](unsigned value) { return std::to_string((value & kFragmentOffsetBits) * kFragmentUnit); });
}

Checksum Ipv4Header::CheckHeader() const {
    if (!HasSoundHeaderSize()) return {ChecksumState::WrongLength};
    const std::optional<PacketBytes> header = Bytes().Piece(0, m_headerSize);
    return header ? CheckInternetChecksum(*header, 10) : Checksum{};
}

TransportPart Ipv4Header::Inside() const {
    TransportPart part{.bytes = Bytes().First(m_totalSize).From(m_headerSize),
                       .declaredSize = m_totalSize - std::min(m_headerSize, m_totalSize),
                       .checkable = m_checkable,
                       .pseudoSum = 0};
    if ((m_fragment & kFlagMoreFragments) != 0) part.checkable = ChecksumState::IsFragment;
    if (const std::optional<PacketBytes> addresses = Bytes().Piece(12, 8)) part.pseudoSum = SumOfWords(*addresses);
    part.pseudoSum += Bytes().Byte(9).value_or(0) + part.declaredSize;
    return part;
}

void Ipv4Header::DescribeInside() {
    const TransportPart part = Inside();
    if (!m_packet.isQuoted && Bytes().Size() > m_totalSize) {
        m_lines.AddNumber(Text{1554, "Behind the packet (bytes):"},
                          static_cast<std::uint32_t>(Bytes().Size() - m_totalSize));
    }
    if ((m_fragment & kFragmentOffsetBits) != 0) {
        m_lines.AddRemark(Text{1552, "This is a later fragment. Its data has no header of its own."});
        return;
    }
    const std::optional<std::uint8_t> protocol = Bytes().Byte(9);
    if (!protocol || (m_packet.isQuoted && part.bytes.IsEmpty())) return;
    switch (*protocol) {
        case kProtocolTcp: DescribeTcp(m_packet, part); break;
        case kProtocolUdp: DescribeUdp(m_packet, part); break;
        case kProtocolIcmp: DescribeIcmp(m_packet, part); break;
        default:
            m_lines.AddNumber(Text{1553, "Data (bytes):"}, static_cast<std::uint32_t>(part.declaredSize));
            break;
    }
}

}  // namespace

void DescribeIpv4(PacketGroups& packet, const PacketBytes& bytes) {
    Ipv4Header(packet, bytes).Describe();
}

}  // namespace brennvar
