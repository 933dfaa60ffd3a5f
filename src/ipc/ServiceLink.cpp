#include "ipc/ServiceLink.h"

namespace brennvar {

ServiceLink::ServiceLink(std::function<void()> wake, const MakeConnector& makeConnector)
    : m_thread(std::move(wake)),
      m_clock(m_thread.Stopping()),
      m_pipeConnector(makeConnector(m_thread.Stopping())),
      m_connector(*m_pipeConnector),
      m_commands(m_connector, m_clock),
      m_filter(m_connector, m_clock),
      m_pipes(m_connector, m_clock) {}

// Before the members that its tasks use go.
ServiceLink::~ServiceLink() {
    m_thread.Stop(std::chrono::milliseconds(0));
}

// The completions also wake the window, which then looks at the state of the service.
void ServiceLink::Send(std::function<void(CommandPipe&)> command, std::function<void()> done) {
    m_thread.Post([this, command = std::move(command)] { command(m_commands); }, std::move(done));
}

void ServiceLink::SendToFilter(std::function<void(FilterQueue&)> command, std::function<void()> done) {
    m_thread.Post([this, command = std::move(command)] { command(m_filter); }, std::move(done));
}

}  // namespace brennvar
