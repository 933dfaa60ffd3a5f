#include "logs/LogDetails.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <utility>

#include "ipc/DriverRecords.h"
#include "logs/PacketText.h"
#include "logs/PortText.h"

namespace brennvar {
namespace {

// More of a packet is not shown: no packet is longer.
constexpr std::size_t kMostDumped = 0xFFFF + 14;  // an IPv4 packet behind an Ethernet header

// What both kinds of record have.
struct Event {
    std::uint32_t hour, minute, second;
    std::uint32_t protocol;
    bool isOutgoing;
    Ipv4 localAddress, remoteAddress;
    std::uint32_t localPort, remotePort;
    std::string_view path;
};

template <class Record>
Event EventOf(const Record& record) {
    return {.hour = record.hour,
            .minute = record.minute,
            .second = record.second,
            .protocol = record.protocol,
            .isOutgoing = record.outgoing != 0,
            .localAddress = record.localAddress,
            .remoteAddress = record.remoteAddress,
            .localPort = record.localPort,
            .remotePort = record.remotePort,
            .path = TextOf(record.path)};
}

// Texts of the logs come from outside: a line break in them could pass for a line of ours.
std::string OneLine(std::string_view given) {
    std::string text(given);
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c == 0x7F; }, ' ');
    return text;
}

std::string TimeText(const Event& event) {
    char text[3 * 10 + 2 + 1];
    (void)std::snprintf(text, sizeof(text), "%02u:%02u:%02u", event.hour, event.minute, event.second);
    return text;
}

std::string ProtocolText(std::uint32_t protocol) {
    switch (protocol) {
        case kProtocolIp: return "IP";
        case kProtocolIcmp: return "ICMP";
        case kProtocolTcp: return "TCP";
        case kProtocolUdp: return "UDP";
        case kLogProtocolArp: return "ARP";
        default: return "Any (" + std::to_string(protocol) + ")";
    }
}

std::string EndpointText(Ipv4 address, std::uint32_t port) {
    std::string text = FormatIpv4(address);
    return port == 0 ? text : text + ":" + std::to_string(port);
}

DetailsLine ActionLine(std::uint32_t action, const Language& language) {
    DetailsLine line{language.GetText(1503, "Action:"), {}};
    switch (action) {
        case 1:
        case 5:
            line.value = language.GetText(4, "Allowed");
            line.tone = Tone::Allow;
            break;
        case 2:
            line.value = language.GetText(5, "Denied");
            line.tone = Tone::Deny;
            break;
        case 3:
            line.value = language.GetText(6, "Asked");
            line.tone = Tone::Ask;
            break;
        case 4: line.value = language.GetText(7, "Disconnected"); break;
        default: line.value = language.GetText(8, "Message"); break;
    }
    return line;
}

DetailsGroup EventGroup(const Event& event, const Language& language) {
    DetailsGroup group{language.GetText(1501, "Event"), {}};
    group.lines.push_back({language.GetText(1502, "Time:"), TimeText(event)});
    group.lines.push_back({language.GetText(484, "Protocol:"), ProtocolText(event.protocol)});
    group.lines.push_back({language.GetText(1504, "Direction:"),
                           event.isOutgoing ? language.GetText(1505, "outgoing, from this computer")
                                            : language.GetText(1506, "incoming, to this computer")});
    return group;
}

void AddProcess(DetailsGroup& group, const Event& event, const Language& language) {
    const bool isKnown = !event.path.empty();
    group.lines.push_back({language.GetText(24, "Process:"),
                           isKnown ? OneLine(event.path) : language.GetText(1114, "unknown"),
                           isKnown ? Tone::Plain : Tone::Muted});
}

// Local and remote side with an arrow between.
DetailsLine PairLine(std::string label, const std::string& local, const std::string& remote, const Event& event,
                     const Language& language) {
    const std::string unknown = language.GetText(1114, "unknown");
    if (local.empty() && remote.empty()) return {std::move(label), unknown, Tone::Muted};
    const auto side = [&](const std::string& text) { return text.empty() ? unknown : OneLine(text); };
    return {std::move(label), side(local) + (event.isOutgoing ? " -> " : " <- ") + side(remote)};
}

DetailsGroup AddressGroup(const Event& event, const LogNames& names, const Language& language) {
    DetailsGroup group{language.GetText(1507, "Addresses"), {}};
    group.lines.push_back(PairLine(language.GetText(12, "Local/Remote IP:"),
                                   EndpointText(event.localAddress, event.localPort),
                                   EndpointText(event.remoteAddress, event.remotePort), event, language));
    group.lines.push_back(
        PairLine(language.GetText(13, "Local/Remote domain:"), names.localName, names.remoteName, event, language));
    group.lines.push_back(PairLine(language.GetText(14, "Local/Remote MAC:"), names.localHardware,
                                   names.remoteHardware, event, language));
    // The side that is called offers the service.
    const std::uint32_t port = event.isOutgoing ? event.remotePort : event.localPort;
    if (event.protocol == kProtocolTcp || event.protocol == kProtocolUdp) {
        group.lines.push_back({language.GetText(1508, "Service:"),
                               port <= 0xFFFF ? PortText(static_cast<std::uint16_t>(port), event.protocol, language)
                                              : std::to_string(port)});
    }
    return group;
}

std::string ValueText(std::uint32_t value) {
    return NumberAndName(value, HexText(value, 8));
}

void AddWhenThere(DetailsGroup& group, std::string label, std::string_view text) {
    if (!text.empty()) group.lines.push_back({std::move(label), OneLine(text)});
}

}  // namespace

DetailsSheet DescribeLogRecord(const TrafficLogRecord& record, const LogNames& names, const Language& language) {
    const Event event = EventOf(record);
    // A record without addresses has its name in their place.
    const bool hasAddresses = record.kind != 0 && record.kind != 2;
    DetailsSheet sheet;
    sheet.title = language.GetText(25, "Log details");
    DetailsGroup group = EventGroup(event, language);
    group.lines.insert(group.lines.begin() + 1, ActionLine(record.action, language));
    AddWhenThere(group, language.GetText(1510, "Rule or event:"), TextOf(record.shortText));
    if (hasAddresses || !event.path.empty()) AddProcess(group, event, language);
    sheet.groups.push_back(std::move(group));
    if (hasAddresses) sheet.groups.push_back(AddressGroup(event, names, language));
    DetailsGroup further{language.GetText(1509, "Further data"), {}};
    AddWhenThere(further, language.GetText(1511, "First text:"), TextOf(record.text1));
    AddWhenThere(further, language.GetText(1512, "Second text:"), TextOf(record.text2));
    further.lines.push_back({language.GetText(1513, "Value:"), ValueText(record.value)});
    sheet.groups.push_back(std::move(further));
    return sheet;
}

DetailsSheet DescribePacket(const PacketLogHeader& header, std::span<const std::byte> captured,
                            const LogNames& names, const Language& language) {
    const Event event = EventOf(header);
    DetailsSheet sheet;
    sheet.title = language.GetText(1500, "Packet data");
    DetailsGroup group = EventGroup(event, language);
    AddProcess(group, event, language);
    group.lines.push_back({language.GetText(1513, "Value:"), ValueText(header.value)});
    sheet.groups.push_back(std::move(group));
    sheet.groups.push_back(AddressGroup(event, names, language));
    captured = captured.first(std::min<std::size_t>(captured.size(), header.packetSize));
    for (DetailsGroup& part : DescribePacketBytes(captured, header.protocol, language)) {
        sheet.groups.push_back(std::move(part));
    }
    sheet.bytesHeading = language.GetText(1516, "Captured bytes:") + " " + std::to_string(captured.size());
    // The log says how many there should be; the file may end before.
    if (captured.size() < header.packetSize) {
        sheet.bytesHeading.append(" / ").append(std::to_string(header.packetSize));
    }
    if (captured.size() > kMostDumped) {
        captured = captured.first(kMostDumped);
        sheet.bytesHeading.append(", ").append(language.GetText(1517, "shown:"));
        sheet.bytesHeading.append(" ").append(std::to_string(kMostDumped));
    }
    sheet.bytes = DumpLines(captured);
    return sheet;
}

}  // namespace brennvar
