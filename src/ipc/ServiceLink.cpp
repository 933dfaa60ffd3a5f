#include "ipc/ServiceLink.h"

namespace brennvar {

ServiceLink::ServiceLink(std::function<void()> wake, const MakeConnector& makeConnector)
    : m_thread(std::move(wake)),
      m_clock(m_thread.Stopping()),
      m_pipeConnector(makeConnector(m_thread.Stopping())),
      m_connector(*m_pipeConnector),
      m_commands(m_connector, m_clock),
      m_pipes(m_connector, m_clock) {}

// Before the members that its tasks use go.
ServiceLink::~ServiceLink() {
    m_thread.Stop(std::chrono::milliseconds(0));
}

void ServiceLink::Send(std::function<void(CommandPipe&)> command) {
    // The completion does nothing, but it wakes the window, which then looks at the state of the service.
    m_thread.Post([this, command = std::move(command)] { command(m_commands); }, [] {});
}

void ServiceLink::Send(std::function<void(CommandPipe&)> command, std::function<void(bool wasThere)> done) {
    m_thread.Ask<bool>(
        [this, command = std::move(command)] {
            command(m_commands);
            return m_connector.State() == PeerState::Reachable;
        },
        [done = std::move(done)](std::optional<bool> wasThere) { done(wasThere.value_or(false)); });
}

}  // namespace brennvar
