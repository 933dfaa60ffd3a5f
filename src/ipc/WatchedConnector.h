// Tells from the calls on the service's pipes whether the service is there.
#pragma once

#include <algorithm>
#include <map>
#include <mutex>

#include "ipc/Pipe.h"

namespace brennvar {

enum class PeerState {
    Unknown,
    Reachable,
    Missing,
    Foreign,  // another program has its name
};

// Passes everything on to another connector and remembers for each pipe how the last call on it ended. One thread
// calls, any may ask.
class WatchedConnector final : public PipeConnector {
public:
    // Borrowed; must outlive this one.
    explicit WatchedConnector(PipeConnector& inner) : m_inner(inner) {}

    [[nodiscard]] bool WaitForInstance(const std::string& name, std::chrono::milliseconds limit) override {
        const bool found = m_inner.WaitForInstance(name, limit);
        if (!found) Remember(name, PeerState::Missing);
        return found;
    }
    [[nodiscard]] OpenedPipe Open(const std::string& name) override {
        OpenedPipe opened = m_inner.Open(name);
        Remember(name, opened.isForeign ? PeerState::Foreign : PeerState::Reachable);
        return opened;
    }

    // Of the service as a whole: Foreign as long as one of its pipes is somebody else's, otherwise as the last call
    // found it; Unknown until that is over.
    [[nodiscard]] PeerState State() const {
        const std::lock_guard lock(m_mutex);
        return Has(PeerState::Foreign) ? PeerState::Foreign : m_last;
    }
    // As the last call found it, whichever pipe that was on.
    [[nodiscard]] PeerState LastCall() const {
        const std::lock_guard lock(m_mutex);
        return m_last;
    }
    // Of one pipe; Unknown also when the service has come back since.
    [[nodiscard]] PeerState StateOf(const std::string& name) const {
        const std::lock_guard lock(m_mutex);
        const auto found = m_states.find(name);
        return found == m_states.end() ? PeerState::Unknown : found->second;
    }

private:
    void Remember(const std::string& name, PeerState state) {
        const std::lock_guard lock(m_mutex);
        if (state == PeerState::Reachable) {
            // A service that comes back makes all of its pipes anew: what was missing need not be missing any more.
            // That another program has one of them counts until that one is there again that was missing itself;
            // a pipe that always is would make it forgotten with every call on the others.
            const auto found = m_states.find(name);
            const bool isBack = found != m_states.end() && found->second == PeerState::Missing;
            std::erase_if(m_states, [=](const auto& pipe) { return isBack || pipe.second == PeerState::Missing; });
        }
        m_states[name] = m_last = state;
    }
    [[nodiscard]] bool Has(PeerState state) const {
        return std::any_of(m_states.begin(), m_states.end(),
                           [=](const auto& pipe) { return pipe.second == state; });
    }

    PipeConnector& m_inner;
    mutable std::mutex m_mutex;  // guards what follows
    std::map<std::string, PeerState> m_states;
    PeerState m_last = PeerState::Unknown;
};

}  // namespace brennvar
