// The client side of a named pipe, as a seam. The transports (waits, retries, pauses) are built on it and run in
// tests against a scripted one.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <span>
#include <string>

namespace brennvar {

enum class PipeOutcome {
    Done,
    TimedOut,  // still pending at the end of its wait: cancelled and collected, the connection is of no more use
    Failed,
};

// One open connection. Closed by the destructor.
class PipeConnection {
public:
    virtual ~PipeConnection() = default;
    // Message read mode, which a transaction needs.
    [[nodiscard]] virtual bool SetMessageMode() = 0;
    // Writes all bytes as one message; a pending write is waited for at most pendingLimit.
    [[nodiscard]] virtual PipeOutcome Write(std::span<const std::byte> bytes,
                                            std::chrono::milliseconds pendingLimit) = 0;
    // One message out, one message in. answer is filled up to what came (receivedSize bytes, never more than
    // answer.size()); an answer longer than the buffer is cut and counts as Done.
    [[nodiscard]] virtual PipeOutcome Transact(std::span<const std::byte> request, std::span<std::byte> answer,
                                               std::size_t& receivedSize,
                                               std::chrono::milliseconds pendingLimit) = 0;
};

// What came of opening a pipe.
struct OpenedPipe {
    std::unique_ptr<PipeConnection> connection{};  // null: it could not be opened
    // The pipe belongs to somebody who is not believed to be its service, or who does not let us see whose it is.
    bool isForeign = false;
};

class PipeConnector {
public:
    virtual ~PipeConnector() = default;
    // True when an instance of the pipe is free within the limit; false at once when the pipe does not exist.
    [[nodiscard]] virtual bool WaitForInstance(const std::string& name, std::chrono::milliseconds limit) = 0;
    [[nodiscard]] virtual OpenedPipe Open(const std::string& name) = 0;
};

}  // namespace brennvar
