// Tells from the waits for the service's pipes whether the service is there.
#pragma once

#include <atomic>

#include "ipc/Pipe.h"

namespace brennvar {

enum class PeerState { Unknown, Reachable, Missing };

// Passes everything on to another connector and remembers how the last wait ended. One thread waits, any may ask.
class WatchedConnector final : public PipeConnector {
public:
    // Borrowed; must outlive this one.
    explicit WatchedConnector(PipeConnector& inner) : m_inner(inner) {}

    [[nodiscard]] bool WaitForInstance(const std::string& name, std::chrono::milliseconds limit) override {
        const bool found = m_inner.WaitForInstance(name, limit);
        m_state = found ? PeerState::Reachable : PeerState::Missing;
        return found;
    }
    [[nodiscard]] std::unique_ptr<PipeConnection> Open(const std::string& name) override {
        return m_inner.Open(name);
    }

    // Unknown until the first wait is over.
    [[nodiscard]] PeerState State() const { return m_state; }

private:
    PipeConnector& m_inner;
    std::atomic<PeerState> m_state = PeerState::Unknown;
};

}  // namespace brennvar
