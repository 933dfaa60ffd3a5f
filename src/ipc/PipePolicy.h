// How patiently each transport calls on the service's pipes, in one place, and the call itself. The figures are
// those that the service's timing was made for.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "base/Clock.h"
#include "ipc/Pipe.h"

namespace brennvar {

struct PipePolicy {
    int attempts = 1;                          // waits for a free instance, at most
    std::chrono::milliseconds wait{};          // limit of each of them
    std::chrono::milliseconds pause{};         // between two failed ones
    std::chrono::milliseconds pendingLimit{};  // for the write or transaction that follows
};

// Commands must not be lost while the service restarts: six minutes at the worst.
inline constexpr PipePolicy kCommandPipePolicy{.attempts = 30,
                                               .wait = std::chrono::seconds(10),
                                               .pause = std::chrono::seconds(2),
                                               .pendingLimit = std::chrono::milliseconds(600)};
// Questions for process paths and tray texts.
inline constexpr PipePolicy kTransactPolicy{.attempts = 30,
                                            .wait = std::chrono::seconds(10),
                                            .pause = std::chrono::milliseconds(200),
                                            .pendingLimit = std::chrono::milliseconds(600)};
// The web-filter queue and the answers to connection questions are called on once.
inline constexpr PipePolicy kWriteOncePolicy{.attempts = 1,
                                             .wait = std::chrono::seconds(20),
                                             .pause = std::chrono::milliseconds(0),
                                             .pendingLimit = std::chrono::milliseconds(600)};
// The service looks through its whole list before it answers.
inline constexpr PipePolicy kQueueTransactPolicy{.attempts = 1,
                                                 .wait = std::chrono::seconds(20),
                                                 .pause = std::chrono::milliseconds(0),
                                                 .pendingLimit = std::chrono::seconds(60)};

struct CalledPipe {
    // False: every wait failed, or found somebody else's pipe, or the program stops.
    bool isThere = false;
    std::unique_ptr<PipeConnection> connection{};  // null also when it is there, but could not be opened
};

// Waits for a free instance, as often as the policy says, and opens it, once. A pipe that is not the service's is
// as good as none.
[[nodiscard]] CalledPipe CallPipe(PipeConnector& connector, Clock& clock, const std::string& pipeName,
                                  const PipePolicy& policy);

}  // namespace brennvar
