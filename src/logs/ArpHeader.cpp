#include "logs/PacketHeaders.h"

namespace brennvar {
namespace {

constexpr std::size_t kHardwareAddressSize = 6;  // of Ethernet
constexpr std::size_t kIpv4Size = 4;
constexpr std::size_t kFixedSize = 8;  // before the addresses
constexpr Text kNone{1514, "none"};

std::string HardwareText(const PacketBytes& address) {
    return HexBytesText(address, '-');
}

std::string EtherTypeText(std::uint16_t type) {
    std::string text = HexText(type, 4);
    if (type == kEtherTypeIpv4) text += " (IPv4)";
    if (type == kEtherTypeArp) text += " (ARP)";
    return text;
}

}  // namespace

void DescribeEthernet(PacketGroups& packet, const PacketBytes& bytes) {
    HeaderLines lines(packet, Text{1519, "Ethernet header"}, bytes);
    lines.AddField(Text{1535, "Source address:"}, bytes.Piece(kHardwareAddressSize, kHardwareAddressSize),
                   &HardwareText);
    lines.AddField(Text{1536, "Destination address:"}, bytes.Piece(0, kHardwareAddressSize), &HardwareText);
    lines.AddField(Text{1588, "Type:"}, bytes.Word(2 * kHardwareAddressSize), &EtherTypeText);
}

void DescribeArp(PacketGroups& packet, const PacketBytes& bytes) {
    HeaderLines lines(packet, Text{1524, "ARP packet"}, bytes);
    if (bytes.IsEmpty()) return;
    lines.AddField(Text{1589, "Hardware type:"}, bytes.Word(0),
                   [](std::uint16_t type) { return NumberAndName(type, type == 1 ? "Ethernet" : ""); });
    lines.AddField(Text{1590, "Protocol type:"}, bytes.Word(2), &EtherTypeText);
    const std::optional<std::uint8_t> hardwareSize = bytes.Byte(4);
    const std::optional<std::uint8_t> protocolSize = bytes.Byte(5);
    lines.AddNumber(Text{1591, "Length of hardware addresses (bytes):"}, hardwareSize);
    lines.AddNumber(Text{1592, "Length of protocol addresses (bytes):"}, protocolSize);
    lines.AddField(Text{1593, "Operation:"}, bytes.Word(6), [&](std::uint16_t operation) {
        if (operation == 1) return NumberAndName(operation, lines.Say(Text{1594, "request"}));
        if (operation == 2) return NumberAndName(operation, lines.Say(Text{1595, "reply"}));
        return NumberAndName(operation, lines.Say(Text{1114, "unknown"}));
    });
    // The addresses' lengths are the packet's own word.
    const std::size_t hardware = hardwareSize.value_or(0);
    const std::size_t protocol = protocolSize.value_or(0);
    const auto piece = [&](std::size_t offset, std::size_t size) {
        return protocolSize ? bytes.Piece(kFixedSize + offset, size) : std::nullopt;
    };
    // Either may say that it is of no length.
    const auto sayHardware = [&](const PacketBytes& address) {
        return address.IsEmpty() ? lines.Say(kNone) : HardwareText(address);
    };
    const auto sayProtocol = [&](const PacketBytes& address) {
        if (address.IsEmpty()) return lines.Say(kNone);
        return address.Size() == kIpv4Size ? FormatIpv4(*address.Address(0)) : HexBytesText(address);
    };
    lines.AddField(Text{1596, "Sender MAC:"}, piece(0, hardware), sayHardware);
    lines.AddField(Text{1597, "Sender IP:"}, piece(hardware, protocol), sayProtocol);
    lines.AddField(Text{1598, "Target MAC:"}, piece(hardware + protocol, hardware), sayHardware);
    lines.AddField(Text{1599, "Target IP:"}, piece(2 * hardware + protocol, protocol), sayProtocol);
}

}  // namespace brennvar
