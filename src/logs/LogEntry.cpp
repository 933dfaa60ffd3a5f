#include "logs/LogEntry.h"

namespace brennvar {

std::string_view NameOf(LogProtocol protocol) {
    switch (protocol) {
        case LogProtocol::Ip: return "IP";
        case LogProtocol::Icmp: return "ICMP";
        case LogProtocol::Tcp: return "TCP";
        case LogProtocol::Udp: return "UDP";
        case LogProtocol::Arp: return "ARP";
        case LogProtocol::Any: break;
    }
    return "Any";
}

LogEntry EntryOf(const TrafficLogRecord& record) {
    return {.hour = record.hour,
            .minute = record.minute,
            .second = record.second,
            .action = LogActionOf(record.action),
            .protocol = LogProtocolOf(record.protocol),
            .isPacket = false,
            .hasAddresses = record.kind != 0 && record.kind != 2,
            .isOutgoing = record.outgoing != 0,
            .localAddress = record.localAddress,
            .remoteAddress = record.remoteAddress,
            .localPort = record.localPort,
            .remotePort = record.remotePort,
            .packetSize = 0,
            .path = TextOf(record.path),
            .shortText = TextOf(record.shortText)};
}

LogEntry EntryOf(const PacketLogHeader& header) {
    return {.hour = header.hour,
            .minute = header.minute,
            .second = header.second,
            .action = LogAction::Message,
            .protocol = LogProtocolOf(header.protocol),
            .isPacket = true,
            .hasAddresses = true,
            .isOutgoing = header.outgoing != 0,
            .localAddress = header.localAddress,
            .remoteAddress = header.remoteAddress,
            .localPort = header.localPort,
            .remotePort = header.remotePort,
            .packetSize = header.packetSize,
            .path = TextOf(header.path),
            .shortText = {}};
}

TrafficFacts FactsOf(const LogEntry& entry) {
    TrafficFacts facts{.program = std::string(entry.path)};
    facts.when = LocalMoment{.minute = static_cast<int>(SecondOfDay(entry.hour, entry.minute, entry.second) / 60)};
    if (!entry.hasAddresses) return facts;
    constexpr std::uint32_t kNumbers[] = {0, 1, 6, 17, kLogProtocolArp};  // of LogProtocol
    if (entry.protocol != LogProtocol::Any) facts.protocol = kNumbers[static_cast<std::size_t>(entry.protocol)];
    facts.direction = entry.isOutgoing ? TrafficDirection::Outgoing : TrafficDirection::Incoming;
    facts.localAddress = entry.localAddress;
    facts.remoteAddress = entry.remoteAddress;
    // A record has room for numbers that are no ports.
    const auto port = [](std::uint32_t number) {
        return number <= 0xFFFF ? static_cast<std::uint16_t>(number) : std::uint16_t{0};
    };
    facts.localPort = port(entry.localPort);
    facts.remotePort = port(entry.remotePort);
    return facts;
}

}  // namespace brennvar
