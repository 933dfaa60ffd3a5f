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

}  // namespace brennvar
