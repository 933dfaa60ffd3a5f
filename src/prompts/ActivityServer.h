// Serves the queue pipe, one client after the other: answers what it can and asks the user for the rest. A thread
// of its own runs it; it waits for a client as long as it takes, and for the user.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/Clock.h"
#include "ipc/ActivityQueue.h"
#include "ipc/RecordPipe.h"
#include "prompts/ActivityRequest.h"

namespace brennvar {

// What is looked up for an answer, on the server's thread.
class ActivitySources {
public:
    virtual ~ActivitySources() = default;
    // The whole path is in the list of trusted programs.
    [[nodiscard]] virtual bool IsTrusted(std::string_view path) = 0;
    // The executable of a process; nothing when nobody knows it.
    [[nodiscard]] virtual std::optional<std::string> ProcessPath(std::uint32_t processId) = 0;
};

// The name of one of the product's own programs stands somewhere in the path, whatever the case of its letters.
[[nodiscard]] bool IsOwnProgram(std::string_view path);

// A record of which fewer bytes may have come: the others are zero.
[[nodiscard]] ActivityQueueMessage DecodeActivity(std::span<const std::byte> bytes);

class ActivityServer {
public:
    // The service reads its list anew after the command before it can be told that the program may go on.
    static constexpr std::chrono::milliseconds kTrustPause{1000};
    // After a wait for a client that has failed.
    static constexpr std::chrono::milliseconds kFailurePause{100};

    // All are borrowed. The clock's waits end early when the program stops.
    ActivityServer(RecordPipe& pipe, ActivitySources& sources, ActivityUser& user, Clock& waits)
        : m_pipe(pipe), m_sources(sources), m_user(user), m_waits(waits) {}

    // Returns when it has been told to stop and the client of the moment has been served; at once when there is no
    // pipe to be had.
    void Run();
    // Any thread. The server sees it after each client, so that it takes one more for it to wake up.
    void RequestStop() { m_isRunning = false; }

private:
    enum class Reply { None, Plain, Flushed };

    void Serve();
    // Sets the answer in the message.
    [[nodiscard]] Reply Decide(ActivityQueueMessage& message);
    [[nodiscard]] bool IsAllowed(ActivityRequest::Kind kind, const ActivityQueueMessage& message);

    RecordPipe& m_pipe;
    ActivitySources& m_sources;
    ActivityUser& m_user;
    Clock& m_waits;
    std::atomic<bool> m_isRunning{true};
};

}  // namespace brennvar
