// Named pipes for tests: a script of failures, a function that plays the server, a record of what was asked.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <limits>
#include <new>
#include <vector>

#include "base/Bytes.h"
#include "ipc/Pipe.h"

namespace brennvar::test {

class FakePipe final : public PipeConnector {
public:
    using Bytes = std::vector<std::byte>;
    struct Message {
        std::string pipe;
        Bytes bytes;
        std::chrono::milliseconds pendingLimit;
    };
    static constexpr int kAlways = std::numeric_limits<int>::max();

    // The script.
    int failingWaits = 0;  // so many waits fail before one succeeds; kAlways: there is no server
    int foreignOpens = 0;  // so many times it is somebody else's; kAlways: it always is
    bool canOpen = true;
    bool breaksOff = false;  // every wait throws, as without memory: what was sent is given up at once
    bool canSetMessageMode = true;
    PipeOutcome outcome = PipeOutcome::Done;      // of every write and transaction
    std::function<Bytes(const Message&)> server;  // the answer to a transaction; none: an empty one

    // What was asked.
    std::vector<std::chrono::milliseconds> waits;  // the limits
    std::vector<std::string> opened;
    std::vector<Message> writes;
    std::vector<Message> requests;
    int openCount = 0;  // connections that are open now

    [[nodiscard]] bool WaitForInstance(const std::string&, std::chrono::milliseconds limit) override {
        waits.push_back(limit);
        if (breaksOff) throw std::bad_alloc();
        if (failingWaits == 0) return true;
        if (failingWaits != kAlways) --failingWaits;
        return false;
    }

    [[nodiscard]] OpenedPipe Open(const std::string& name) override {
        opened.push_back(name);
        if (foreignOpens > 0) {
            if (foreignOpens != kAlways) --foreignOpens;
            return {.isForeign = true};
        }
        if (!canOpen) return {};
        return {.connection = std::make_unique<Connection>(*this)};
    }

private:
    class Connection final : public PipeConnection {
    public:
        explicit Connection(FakePipe& pipe) : m_pipe(pipe) { ++m_pipe.openCount; }
        ~Connection() override { --m_pipe.openCount; }

        [[nodiscard]] bool SetMessageMode() override { return m_isMessageMode = m_pipe.canSetMessageMode; }

        [[nodiscard]] PipeOutcome Write(std::span<const std::byte> bytes,
                                        std::chrono::milliseconds pendingLimit) override {
            m_pipe.writes.push_back(MessageOf(bytes, pendingLimit));
            return m_pipe.outcome;
        }

        [[nodiscard]] PipeOutcome Transact(std::span<const std::byte> request, std::span<std::byte> answer,
                                           std::size_t& receivedSize,
                                           std::chrono::milliseconds pendingLimit) override {
            if (!m_isMessageMode) return PipeOutcome::Failed;  // as Windows does
            m_pipe.requests.push_back(MessageOf(request, pendingLimit));
            const Bytes sent = m_pipe.server ? m_pipe.server(m_pipe.requests.back()) : Bytes();
            // Also a transaction that fails may have touched the buffer.
            const std::size_t size = std::min(sent.size(), answer.size());
            if (size > 0) std::memcpy(answer.data(), sent.data(), size);
            if (m_pipe.outcome == PipeOutcome::Done) receivedSize = size;
            return m_pipe.outcome;
        }

    private:
        [[nodiscard]] Message MessageOf(std::span<const std::byte> bytes, std::chrono::milliseconds limit) const {
            return {
                .pipe = m_pipe.opened.back(), .bytes = Bytes(bytes.begin(), bytes.end()), .pendingLimit = limit};
        }

        FakePipe& m_pipe;
        bool m_isMessageMode = false;
    };
};

}  // namespace brennvar::test
