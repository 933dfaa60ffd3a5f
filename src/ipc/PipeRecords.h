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
// Request: code 1 and a process id. Answer: status (2 = found) and the executable's path.
struct PidResolveRecord {
    std::uint32_t codeOrStatus;  //   0
    std::uint32_t processId;     //   4  not read in an answer
    char path[512];              //   8  zero in a request
};

// Request: code 1. Answer: status (2 = valid) and the notice.
struct TrayTextRecord {
    std::uint32_t codeOrStatus;  //   0
    char text[4096];             //   4  zero in a request
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

static_assert(RecordType<PidResolveRecord> && sizeof(PidResolveRecord) == 520);
static_assert(offsetof(PidResolveRecord, codeOrStatus) == 0 && offsetof(PidResolveRecord, processId) == 4);
static_assert(offsetof(PidResolveRecord, path) == 8);
static_assert(RecordType<TrayTextRecord> && sizeof(TrayTextRecord) == 4100);
static_assert(offsetof(TrayTextRecord, codeOrStatus) == 0 && offsetof(TrayTextRecord, text) == 4);
static_assert(RecordType<FilterQueueRecord> && sizeof(FilterQueueRecord) == 6168);
static_assert(offsetof(FilterQueueRecord, code) == 0 && offsetof(FilterQueueRecord, answerValue) == 8);
static_assert(offsetof(FilterQueueRecord, text) == 12 && offsetof(FilterQueueRecord, entryOrValue) == 5132);
static_assert(offsetof(FilterQueueRecord, number) == 6160);
static_assert(RecordType<ConnectionPromptAnswer> && sizeof(ConnectionPromptAnswer) == 276);
static_assert(offsetof(ConnectionPromptAnswer, kind) == 0 && offsetof(ConnectionPromptAnswer, decision) == 4);
static_assert(offsetof(ConnectionPromptAnswer, questionId) == 8 && offsetof(ConnectionPromptAnswer, path) == 12);
static_assert(offsetof(ConnectionPromptAnswer, processId) == 272);

}  // namespace brennvar
