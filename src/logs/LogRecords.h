// The records of the service's log files. Logs are written plain, one file per kind and day.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"
#include "base/Ipv4.h"

namespace brennvar {

#pragma pack(push, 1)
// "Log\YYYYMMDD_dns.log": one resolved name. The last record for an address is its latest name.
struct DnsLogRecord {
    Ipv4 address;    // 0
    char name[256];  // 4
};

// "Log\YYYYMMDD_mac.log": one hardware address seen for an address.
struct MacLogRecord {
    std::uint8_t hardwareAddress[6];  // 0
    std::uint16_t unused6;            // 6
    Ipv4 address;                     // 8
};

// "advice.dat": what is advised for a program.
struct AdviceRecord {
    char path[400];        //   0
    std::uint32_t advice;  // 400  0 deny, 1 allow
};

// The traffic log's coding of protocols differs from the IP header's in one place: ARP is decimal 806.
inline constexpr std::uint32_t kLogProtocolArp = 806;

// "Log\YYYYMMDD.log": one logged event.
struct TrafficLogRecord {
    std::uint32_t second;         //   0
    std::uint32_t minute;         //   4
    std::uint32_t hour;           //   8
    std::uint32_t restOfTime[6];  //  12  day, month, year, weekday, day of year, daylight flag
    std::byte unused36[72];       //  36
    std::uint32_t action;         // 108  1 allowed, 2 denied, 3 asked, 4 disconnected, 5 allowed, else message
    char shortText[32];           // 112  shown when the record carries no addresses
    std::uint32_t protocol;       // 144
    std::uint32_t outgoing;       // 148
    Ipv4 localAddress;            // 152
    std::uint32_t localPort;      // 156  host order
    Ipv4 remoteAddress;           // 160
    std::uint32_t remotePort;     // 164  host order
    char path[260];               // 168
    char text1[20];               // 428
    char text2[20];               // 448
    std::uint32_t value;          // 468
    std::uint32_t kind;           // 472  0 and 2 carry no address pair
    std::uint32_t unused476;      // 476
};

// "Log\YYYYMMDD_packet.log": one logged packet; packetSize bytes of it follow.
struct PacketLogHeader {
    std::uint32_t second;         //   0
    std::uint32_t minute;         //   4
    std::uint32_t hour;           //   8
    std::uint32_t restOfTime[6];  //  12  as in the traffic log
    std::uint32_t value;          //  36
    std::uint32_t protocol;       //  40  coded as in the traffic log
    std::uint32_t outgoing;       //  44
    Ipv4 localAddress;            //  48
    std::uint32_t localPort;      //  52  host order
    Ipv4 remoteAddress;           //  56
    std::uint32_t remotePort;     //  60  host order
    char path[260];               //  64
    std::byte unused324[12];      // 324
    std::uint32_t packetSize;     // 336
};
#pragma pack(pop)
static_assert(RecordType<DnsLogRecord> && sizeof(DnsLogRecord) == 260);
static_assert(offsetof(DnsLogRecord, address) == 0 && offsetof(DnsLogRecord, name) == 4);
static_assert(RecordType<MacLogRecord> && sizeof(MacLogRecord) == 12);
static_assert(offsetof(MacLogRecord, hardwareAddress) == 0 && offsetof(MacLogRecord, address) == 8);
static_assert(RecordType<AdviceRecord> && sizeof(AdviceRecord) == 404);
static_assert(offsetof(AdviceRecord, path) == 0 && offsetof(AdviceRecord, advice) == 400);
static_assert(RecordType<TrafficLogRecord> && sizeof(TrafficLogRecord) == 480);
static_assert(offsetof(TrafficLogRecord, restOfTime) == 12 && offsetof(TrafficLogRecord, action) == 108);
static_assert(offsetof(TrafficLogRecord, shortText) == 112 && offsetof(TrafficLogRecord, protocol) == 144);
static_assert(offsetof(TrafficLogRecord, outgoing) == 148 && offsetof(TrafficLogRecord, localAddress) == 152);
static_assert(offsetof(TrafficLogRecord, localPort) == 156 && offsetof(TrafficLogRecord, remoteAddress) == 160);
static_assert(offsetof(TrafficLogRecord, remotePort) == 164 && offsetof(TrafficLogRecord, path) == 168);
static_assert(offsetof(TrafficLogRecord, text1) == 428 && offsetof(TrafficLogRecord, text2) == 448);
static_assert(offsetof(TrafficLogRecord, value) == 468 && offsetof(TrafficLogRecord, kind) == 472);
static_assert(RecordType<PacketLogHeader> && sizeof(PacketLogHeader) == 340);
static_assert(offsetof(PacketLogHeader, restOfTime) == 12 && offsetof(PacketLogHeader, value) == 36);
static_assert(offsetof(PacketLogHeader, protocol) == 40 && offsetof(PacketLogHeader, outgoing) == 44);
static_assert(offsetof(PacketLogHeader, localAddress) == 48 && offsetof(PacketLogHeader, localPort) == 52);
static_assert(offsetof(PacketLogHeader, remoteAddress) == 56 && offsetof(PacketLogHeader, remotePort) == 60);
static_assert(offsetof(PacketLogHeader, path) == 64 && offsetof(PacketLogHeader, unused324) == 324);
static_assert(offsetof(PacketLogHeader, packetSize) == 336);

}  // namespace brennvar
