// What a log says of one event or packet, in terms that both kinds of log share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/Ipv4.h"
#include "base/TrafficFacts.h"
#include "logs/LogRecords.h"

namespace brennvar {

// What happened to a connection. Codes 1 and 5 of the traffic log both read "Allowed" and count as one.
enum class LogAction : std::uint8_t { Allowed, Denied, Asked, Disconnected, Message };
inline constexpr std::size_t kLogActionCount = 5;
[[nodiscard]] constexpr LogAction LogActionOf(std::uint32_t code) {
    switch (code) {
        case 1:
        case 5: return LogAction::Allowed;
        case 2: return LogAction::Denied;
        case 3: return LogAction::Asked;
        case 4: return LogAction::Disconnected;
        default: return LogAction::Message;
    }
}

enum class LogProtocol : std::uint8_t { Ip, Icmp, Tcp, Udp, Arp, Any };
inline constexpr std::size_t kLogProtocolCount = 6;
[[nodiscard]] constexpr LogProtocol LogProtocolOf(std::uint32_t code) {
    switch (code) {
        case 0: return LogProtocol::Ip;
        case 1: return LogProtocol::Icmp;
        case 6: return LogProtocol::Tcp;
        case 17: return LogProtocol::Udp;
        case kLogProtocolArp: return LogProtocol::Arp;
        default: return LogProtocol::Any;
    }
}
// "TCP"; not translated.
[[nodiscard]] std::string_view NameOf(LogProtocol protocol);

// 0 for what is no time of day.
[[nodiscard]] constexpr std::uint32_t SecondOfDay(std::uint32_t hour, std::uint32_t minute, std::uint32_t second) {
    return hour > 23 || minute > 59 || second > 59 ? 0 : (hour * 60 + minute) * 60 + second;
}

// The texts lie in the record that it was made of, and live as long.
struct LogEntry {
    // Any numbers.
    std::uint32_t hour = 0;
    std::uint32_t minute = 0;
    std::uint32_t second = 0;
    LogAction action = LogAction::Message;  // of a packet: no action
    LogProtocol protocol = LogProtocol::Any;
    bool isPacket = false;
    bool hasAddresses = false;  // else the short text stands in their place
    bool isOutgoing = false;
    Ipv4 localAddress = 0;
    Ipv4 remoteAddress = 0;
    std::uint32_t localPort = 0;
    std::uint32_t remotePort = 0;
    std::uint32_t packetSize = 0;  // as its header says
    std::string_view path;
    std::string_view shortText;
};

[[nodiscard]] LogEntry EntryOf(const TrafficLogRecord& record);
[[nodiscard]] LogEntry EntryOf(const PacketLogHeader& header);
// What it tells of a connection; of the moment the minute only. An event without addresses has no ends and no
// direction.
[[nodiscard]] TrafficFacts FactsOf(const LogEntry& entry);

}  // namespace brennvar
