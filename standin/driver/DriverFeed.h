// How the service stand-in feeds the driver stand-in: control codes of their own on "\\.\brennvarfw", which the
// interface opens and never asks anything. All are METHOD_BUFFERED. Addresses and ports are in network byte order.
#pragma once

#include <cstddef>
#include <cstdint>

#include "ipc/DriverRecords.h"

namespace brennvar::standin {

// Input: the whole table as it is to be answered, one ConnectionEntry (28 bytes) after the other. No output.
inline constexpr std::uint32_t kFeedSetConnections = 0x8E872804;
// Input: the whole table, one ListenerEntry (14 bytes) after the other. No output.
inline constexpr std::uint32_t kFeedSetListeners = 0x8E872808;
// Input: TrafficTotals, 32 bytes. No output.
inline constexpr std::uint32_t kFeedSetTotals = 0x8E87280C;
// Input: QueuedQuestion, followed by the bytes of the held packet (at most 65,536). No output.
inline constexpr std::uint32_t kFeedQueueQuestion = 0x8E872810;
// Input: u32 question id, which then counts as answered. Fails with "not found" unless that question was handed
// out.
inline constexpr std::uint32_t kFeedAnswerQuestion = 0x8E872814;
// Input: HostileOrder. No output.
inline constexpr std::uint32_t kFeedSetHostile = 0x8E872818;
// No input. Output: QuestionCounts.
inline constexpr std::uint32_t kFeedReadCounts = 0x8E87281C;

// What the driver does to the next answers of a request, to show what its caller makes of them.
enum class Hostility : std::uint32_t {
    None = 0,
    Fail = 1,   // the request fails
    Short = 2,  // half of the answer's bytes
    Long = 3,   // the driver claims to have written 28 bytes more than the caller's buffer holds
    Odd = 4,    // a table has 5 bytes 0xFF behind its last entry; totals have 27 bytes; a question is present with
                // 0xFFFFFFFF and its path fills the field without a zero
};

#pragma pack(push, 1)
struct QueuedQuestion {
    std::uint32_t id;                 // 0
    ConnectionPromptRequest request;  // 4
};

struct HostileOrder {
    std::uint32_t request;  // 0  the control code whose answers are meant
    Hostility hostility;    // 4
    std::uint32_t answers;  // 8  how many answers; then the driver is good again
};

struct QuestionCounts {
    std::uint32_t pending;   // 0  queued, not fetched yet
    std::uint32_t fetched;   // 4  handed out, not answered yet
    std::uint32_t answered;  // 8
};
#pragma pack(pop)
static_assert(RecordType<QueuedQuestion> && sizeof(QueuedQuestion) == 453 &&
              offsetof(QueuedQuestion, request) == 4);
static_assert(RecordType<HostileOrder> && sizeof(HostileOrder) == 12 && offsetof(HostileOrder, answers) == 8);
static_assert(RecordType<QuestionCounts> && sizeof(QuestionCounts) == 12);

}  // namespace brennvar::standin
