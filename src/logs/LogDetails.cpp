#include "logs/LogDetails.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/DisplayName.h"
#include "ipc/DriverRecords.h"
#include "logs/LogCells.h"
#include "logs/PacketText.h"
#include "logs/PortText.h"

namespace brennvar {
namespace {

// More of a packet is not shown: no packet is longer.
constexpr std::size_t kMostDumped = 0xFFFF + 14;  // an IPv4 packet behind an Ethernet header

// A protocol that has no name is told by its number as well.
std::string ProtocolText(std::uint32_t code) {
    const LogProtocol protocol = LogProtocolOf(code);
    const std::string name(NameOf(protocol));
    return protocol == LogProtocol::Any ? name + " (" + std::to_string(code) + ")" : name;
}

std::string EndpointText(Ipv4 address, std::uint32_t port) {
    std::string text = FormatIpv4(address);
    return port == 0 ? text : text + ":" + std::to_string(port);
}

DetailsLine ActionLine(LogAction action, const Language& language) {
    return {language.GetText(1503, "Action:"), LogTexts(language).actions[static_cast<std::size_t>(action)],
            ToneOf(action)};
}

DetailsGroup EventGroup(const LogEntry& event, std::uint32_t protocol, const Language& language) {
    DetailsGroup group{language.GetText(1501, "Event"), {}};
    std::string time;
    AppendTime(time, event);
    group.lines.push_back({language.GetText(1502, "Time:"), std::move(time)});
    group.lines.push_back({language.GetText(484, "Protocol:"), ProtocolText(protocol)});
    group.lines.push_back({language.GetText(1504, "Direction:"),
                           event.isOutgoing ? language.GetText(1505, "outgoing, from this computer")
                                            : language.GetText(1506, "incoming, to this computer")});
    return group;
}

void AddProcess(DetailsGroup& group, const LogEntry& event, const Language& language) {
    const bool isKnown = !event.path.empty();
    group.lines.push_back({language.GetText(24, "Process:"),
                           isKnown ? OneLine(std::string(event.path)) : language.GetText(1114, "unknown"),
                           isKnown ? Tone::Plain : Tone::Muted});
}

// Local and remote side with an arrow between.
DetailsLine PairLine(std::string label, const std::string& local, const std::string& remote, const LogEntry& event,
                     const Language& language) {
    const std::string unknown = language.GetText(1114, "unknown");
    if (local.empty() && remote.empty()) return {std::move(label), unknown, Tone::Muted};
    const auto side = [&](const std::string& text) { return text.empty() ? unknown : OneLine(text); };
    return {std::move(label), side(local) + (event.isOutgoing ? " -> " : " <- ") + side(remote)};
}

DetailsGroup AddressGroup(const LogEntry& event, const LogNames& names, const Language& language) {
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
    if (event.protocol == LogProtocol::Tcp || event.protocol == LogProtocol::Udp) {
        const std::uint32_t code = event.protocol == LogProtocol::Tcp ? kProtocolTcp : kProtocolUdp;
        group.lines.push_back(
            {language.GetText(1508, "Service:"),
             port <= 0xFFFF ? PortText(static_cast<std::uint16_t>(port), code, language) : std::to_string(port)});
    }
    return group;
}

std::string ValueText(std::uint32_t value) {
    return NumberAndName(value, HexText(value, 8));
}

void AddWhenThere(DetailsGroup& group, std::string label, std::string_view text) {
    if (!text.empty()) group.lines.push_back({std::move(label), OneLine(std::string(text))});
}

}  // namespace

DetailsSheet DescribeLogRecord(const TrafficLogRecord& record, const LogNames& names, const Language& language) {
    const LogEntry event = EntryOf(record);
    DetailsSheet sheet;
    sheet.title = language.GetText(25, "Log details");
    DetailsGroup group = EventGroup(event, record.protocol, language);
    group.lines.insert(group.lines.begin() + 1, ActionLine(event.action, language));
    AddWhenThere(group, language.GetText(1510, "Rule or event:"), TextOf(record.shortText));
    if (event.hasAddresses || !event.path.empty()) AddProcess(group, event, language);
    sheet.groups.push_back(std::move(group));
    if (event.hasAddresses) {
        sheet.address = event.remoteAddress;
        sheet.groups.push_back(AddressGroup(event, names, language));
    }
    DetailsGroup further{language.GetText(1509, "Further data"), {}};
    AddWhenThere(further, language.GetText(1511, "First text:"), TextOf(record.text1));
    AddWhenThere(further, language.GetText(1512, "Second text:"), TextOf(record.text2));
    further.lines.push_back({language.GetText(1513, "Value:"), ValueText(record.value)});
    sheet.groups.push_back(std::move(further));
    return sheet;
}

DetailsSheet DescribePacket(const PacketLogHeader& header, std::span<const std::byte> captured,
                            const LogNames& names, const Language& language) {
    const LogEntry event = EntryOf(header);
    DetailsSheet sheet;
    sheet.title = language.GetText(1500, "Packet data");
    sheet.address = event.remoteAddress;
    DetailsGroup group = EventGroup(event, header.protocol, language);
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
