// The queue pipe, of which this program is the server: the service asks through it what a program may do to other
// programs, and tells this program to show itself or to end.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"

namespace brennvar {

inline constexpr char kActivityPipeName[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_USER)";
// The helper for 32-bit programs has a pipe of its own for the same records. Nothing is sent to it from here.
inline constexpr char kHelperPipeName[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_WOW64)";

enum class ActivityKind : std::uint32_t {
    WriteToProcess = 1,  // may it write into another process?
    IsOwnProcess = 2,    // is this process one of ours?
    StartBrowser = 3,    // may it start the web browser?
    ChangeAppInit = 4,   // may the list of libraries that every program loads be changed?
    BringForward = 5,    // show the control center
    Leave = 6,           // end this program
    Wake = 24,           // our own: the server is to look whether it should stop
    Answered = 100,      // stands in every answer
};
inline constexpr std::uint32_t kActivityDenied = 0;
inline constexpr std::uint32_t kActivityAllowed = 1;

#pragma pack(push, 1)
// Request and answer: what is not set here goes back as it came.
struct ActivityQueueMessage {
    ActivityKind kind;        //    0
    std::uint32_t unused4;    //    4
    std::uint32_t answer;     //    8
    char actingPath[4096];    //   12  of the program that acts
    char targetPath[4096];    // 4108  kinds 1 and 3: of the program that it acts on
    std::uint32_t processId;  // 8204  kind 2
};
#pragma pack(pop)

static_assert(RecordType<ActivityQueueMessage> && sizeof(ActivityQueueMessage) == 8208);
static_assert(offsetof(ActivityQueueMessage, kind) == 0 && offsetof(ActivityQueueMessage, unused4) == 4);
static_assert(offsetof(ActivityQueueMessage, answer) == 8 && offsetof(ActivityQueueMessage, actingPath) == 12);
static_assert(offsetof(ActivityQueueMessage, targetPath) == 4108 &&
              offsetof(ActivityQueueMessage, processId) == 8204);

}  // namespace brennvar
