#include "ipc/ServiceLink.h"

namespace brennvar {

ServiceLink::ServiceLink(std::function<void()> wake, const MakeConnector& makeConnector)
    : m_thread(std::move(wake)),
      m_clock(m_thread.Stopping()),
      m_pipeConnector(makeConnector(m_thread.Stopping())),
      m_connector(*m_pipeConnector),
      m_commandConnector(m_connector),
      m_commands(m_commandConnector, m_clock),
      m_filter(m_connector, m_clock),
      m_pipes(m_connector, m_clock) {}

// Before the members that its tasks use go.
ServiceLink::~ServiceLink() {
    m_thread.Stop(std::chrono::milliseconds(0));
}

void ServiceLink::Send(std::function<void(CommandPipe&)> command, Sent done,
                       std::shared_ptr<const StopSignal> withdrawn) {
    Post(
        [this, command = std::move(command), withdrawn = std::move(withdrawn)] {
            m_commandConnector.BeginBatch(withdrawn);
            command(m_commands);
        },
        std::move(done));
}

void ServiceLink::SendToFilter(std::function<void(FilterQueue&)> command, Sent done) {
    Post([this, command = std::move(command)] { command(m_filter); }, std::move(done));
}

void ServiceLink::Post(TaskThread::Task task, Sent done) {
    // There is always a completion: it also wakes the window, which then looks at the state of the service.
    m_thread.Ask<bool>(
        [this, task = std::move(task)] {
            task();
            return m_connector.LastCall() == PeerState::Reachable;
        },
        [done = std::move(done)](std::optional<bool> wasThere) {
            if (done) done(wasThere.value_or(false));
        });
}

}  // namespace brennvar
