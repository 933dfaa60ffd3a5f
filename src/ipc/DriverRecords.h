// What the driver's devices answer: connection and listener tables, traffic totals and pending connection
// questions. Addresses and ports are in network byte order, everything else is little-endian.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"
#include "base/Ipv4.h"

namespace brennvar {

inline constexpr char kDriverDeviceName[] = R"(\\.\brennvarfw)";
inline constexpr char kDriverControlDeviceName[] = R"(\\.\brennvarfw_ctl)";  // connection questions
inline constexpr char kDriverInfoDeviceName[] = R"(\\.\brennvarfw_nfo)";     // tables and totals

inline constexpr std::uint32_t kControlReadConnections = 0x8E872408;
inline constexpr std::uint32_t kControlReadListeners = 0x8E872404;
inline constexpr std::uint32_t kControlReadTotals = 0x8E87240C;
inline constexpr std::uint32_t kControlFetchQuestion = 0x8E862020;

// Sizes of the answer buffers that the driver expects, in bytes: room for 196,608 entries of each table.
inline constexpr std::size_t kConnectionTableSize = 0x540000;
inline constexpr std::size_t kListenerTableSize = 0x2A0000;

// Protocol numbers as in an IP header (IANA).
inline constexpr std::uint32_t kProtocolIp = 0;
inline constexpr std::uint32_t kProtocolIcmp = 1;
inline constexpr std::uint32_t kProtocolTcp = 6;
inline constexpr std::uint32_t kProtocolUdp = 17;

// A question that belongs to no process.
inline constexpr std::uint32_t kNoProcess = 0xFFFFFFFF;

inline constexpr std::uint32_t kQuestionDataSize = 65536;

#pragma pack(push, 1)
struct ConnectionEntry {
    std::uint32_t state;       //  0  11 and above count as 0
    Ipv4 localAddress;         //  4
    std::uint16_t localPort;   //  8  network order
    Ipv4 remoteAddress;        // 10
    std::uint16_t remotePort;  // 14  network order
    std::uint32_t processId;   // 16
    std::uint32_t bytesIn;     // 20
    std::uint32_t bytesOut;    // 24
};

struct ListenerEntry {
    std::uint32_t protocol;   //  0
    Ipv4 localAddress;        //  4
    std::uint16_t localPort;  //  8  network order
    std::uint32_t processId;  // 10
};

struct TrafficTotals {
    std::uint64_t bytesIn;   //  0  since the driver was loaded
    std::uint64_t bytesOut;  //  8
    std::byte unused[16];    // 16
};

// Input and output of the question request. The driver writes through the two addresses.
struct PromptExchangeBlock {
    std::uint32_t questionId;       //  0
    std::uint32_t questionPresent;  //  4  non-zero when a question was filled in
    std::uint64_t dataAddress;      //  8  the caller's packet data area
    std::uint32_t dataSize;         // 16  always 65536
    std::uint32_t unused20;         // 20
    std::uint64_t requestAddress;   // 24  the caller's ConnectionPromptRequest
    std::uint64_t unused32;         // 32
};

struct ConnectionPromptRequest {
    std::byte unused0[20];     //   0
    std::uint32_t protocol;    //  20
    std::uint32_t processId;   //  24  0xFFFFFFFF: no process
    std::byte unused28[6];     //  28
    std::uint16_t localPort;   //  34  network order
    Ipv4 localAddress;         //  36  0: unknown
    std::byte unused40[10];    //  40
    std::uint16_t remotePort;  //  50  network order
    Ipv4 remoteAddress;        //  52  0: unknown
    std::byte unused56[105];   //  56
    char path[288];            // 161  may be empty
};
#pragma pack(pop)

static_assert(RecordType<ConnectionEntry> && sizeof(ConnectionEntry) == 28);
static_assert(offsetof(ConnectionEntry, state) == 0 && offsetof(ConnectionEntry, localAddress) == 4);
static_assert(offsetof(ConnectionEntry, localPort) == 8 && offsetof(ConnectionEntry, remoteAddress) == 10);
static_assert(offsetof(ConnectionEntry, remotePort) == 14 && offsetof(ConnectionEntry, processId) == 16);
static_assert(offsetof(ConnectionEntry, bytesIn) == 20 && offsetof(ConnectionEntry, bytesOut) == 24);
static_assert(RecordType<ListenerEntry> && sizeof(ListenerEntry) == 14);
static_assert(offsetof(ListenerEntry, protocol) == 0 && offsetof(ListenerEntry, localAddress) == 4);
static_assert(offsetof(ListenerEntry, localPort) == 8 && offsetof(ListenerEntry, processId) == 10);
static_assert(RecordType<TrafficTotals> && sizeof(TrafficTotals) == 32);
static_assert(offsetof(TrafficTotals, bytesIn) == 0 && offsetof(TrafficTotals, bytesOut) == 8);
static_assert(RecordType<PromptExchangeBlock> && sizeof(PromptExchangeBlock) == 40);
static_assert(offsetof(PromptExchangeBlock, questionId) == 0 &&
              offsetof(PromptExchangeBlock, questionPresent) == 4);
static_assert(offsetof(PromptExchangeBlock, dataAddress) == 8 && offsetof(PromptExchangeBlock, dataSize) == 16);
static_assert(offsetof(PromptExchangeBlock, requestAddress) == 24 && offsetof(PromptExchangeBlock, unused32) == 32);
static_assert(RecordType<ConnectionPromptRequest> && sizeof(ConnectionPromptRequest) == 449);
static_assert(offsetof(ConnectionPromptRequest, protocol) == 20 &&
              offsetof(ConnectionPromptRequest, processId) == 24);
static_assert(offsetof(ConnectionPromptRequest, localPort) == 34);
static_assert(offsetof(ConnectionPromptRequest, localAddress) == 36);
static_assert(offsetof(ConnectionPromptRequest, remotePort) == 50);
static_assert(offsetof(ConnectionPromptRequest, remoteAddress) == 52 &&
              offsetof(ConnectionPromptRequest, path) == 161);

}  // namespace brennvar
