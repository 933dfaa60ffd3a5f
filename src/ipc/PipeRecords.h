// The fixed records of the service's request/answer pipes: process paths, tray texts, the web-filter queue and the
// answers to connection questions.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"

namespace brennvar {

inline constexpr char kPidResolvePipeName[] = R"(\\.\pipe\BRENNVAR_PID_RESOLVE)";
inline constexpr char kTrayPipeName[] = R"(\\.\pipe\BRENNVAR_IPC_TRAY)";
inline constexpr char kFilterQueuePipeName[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_SRV)";
inline constexpr char kConfirmPipeName[] = R"(\\.\pipe\BRENNVAR_IPC_CONFIRM)";

// Code of every request on the process and tray pipes, and the status of a valid answer.
inline constexpr std::uint32_t kServiceRequestCode = 1;
inline constexpr std::uint32_t kServiceAnswerValid = 2;

#pragma pack(push, 1)
struct PidResolveRequest {
    std::uint32_t code;       //   0  always 1
    std::uint32_t processId;  //   4
    char unused8[512];        //   8
};

struct PidResolveAnswer {
    std::uint32_t status;   //   0  2 = found
    std::uint32_t unused4;  //   4
    char path[512];         //   8  of the executable
};

struct TrayTextRequest {
    std::uint32_t code;  //   0  always 1
    char unused4[4096];  //   4
};

struct TrayTextAnswer {
    std::uint32_t status;  //   0  2 = there is a notice
    char text[4096];       //   4
};

enum class FilterCode : std::uint32_t {
    PutEntry = 1,
    SetProxyPort = 2,
    Query = 3,
    AddEntry = 4,
    DeleteEntry = 5,
};
inline constexpr std::uint32_t kFilterAnswerValid = 100;

// Request and answer of the web-filter queue.
struct FilterQueueRecord {
    std::uint32_t code;          //    0  FilterCode in a request, 100 in a valid answer
    std::uint32_t unused4;       //    4
    std::uint32_t answerValue;   //    8  code 3
    char text[1024];             //   12  codes 1, 3, 4
    std::byte unused1036[4096];  // 1036
    std::uint32_t entryOrValue;  // 5132  entry identifier (code 5), value (code 1)
    std::byte unused5136[1024];  // 5136
    std::uint32_t number;        // 6160  codes 1, 2
    std::uint32_t unused6164;    // 6164
};

enum class PromptDecision : std::uint32_t {
    None = 0,  // the question has no process
    AllowOnce = 1,
    DenyOnce = 2,
    AllowAndRemember = 3,
    DenyAndRemember = 4,
};
inline constexpr std::uint32_t kPromptAnswerKind = 3;

// The answer to a connection question, written in one piece.
struct ConnectionPromptAnswer {
    std::uint32_t kind;        //   0  always 3
    PromptDecision decision;   //   4
    std::uint32_t questionId;  //   8
    char path[260];            //  12  application path as shown
    std::uint32_t processId;   // 272
};
#pragma pack(pop)

static_assert(RecordType<PidResolveRequest> && sizeof(PidResolveRequest) == 520);
static_assert(offsetof(PidResolveRequest, code) == 0 && offsetof(PidResolveRequest, processId) == 4);
static_assert(RecordType<PidResolveAnswer> && sizeof(PidResolveAnswer) == 520);
static_assert(offsetof(PidResolveAnswer, status) == 0 && offsetof(PidResolveAnswer, path) == 8);
static_assert(RecordType<TrayTextRequest> && sizeof(TrayTextRequest) == 4100);
static_assert(offsetof(TrayTextRequest, code) == 0);
static_assert(RecordType<TrayTextAnswer> && sizeof(TrayTextAnswer) == 4100);
static_assert(offsetof(TrayTextAnswer, status) == 0 && offsetof(TrayTextAnswer, text) == 4);
static_assert(RecordType<FilterQueueRecord> && sizeof(FilterQueueRecord) == 6168);
static_assert(offsetof(FilterQueueRecord, code) == 0 && offsetof(FilterQueueRecord, answerValue) == 8);
static_assert(offsetof(FilterQueueRecord, text) == 12 && offsetof(FilterQueueRecord, entryOrValue) == 5132);
static_assert(offsetof(FilterQueueRecord, number) == 6160);
static_assert(RecordType<ConnectionPromptAnswer> && sizeof(ConnectionPromptAnswer) == 276);
static_assert(offsetof(ConnectionPromptAnswer, kind) == 0 && offsetof(ConnectionPromptAnswer, decision) == 4);
static_assert(offsetof(ConnectionPromptAnswer, questionId) == 8 && offsetof(ConnectionPromptAnswer, path) == 12);
static_assert(offsetof(ConnectionPromptAnswer, processId) == 272);

}  // namespace brennvar
