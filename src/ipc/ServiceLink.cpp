#include "ipc/ServiceLink.h"

namespace brennvar {

ServiceLink::ServiceLink(std::function<void()> wake, const MakeConnector& makeConnector)
    : m_thread(std::move(wake)),
      m_clock(m_thread.Stopping()),
      m_pipeConnector(makeConnector(m_thread.Stopping())),
      m_connector(*m_pipeConnector),
      m_sending(m_connector),
      m_commands(m_sending, m_clock),
      m_filter(m_sending, m_clock),
      m_pipes(m_connector, m_clock) {}

// Before the members that its tasks use go.
ServiceLink::~ServiceLink() {
    m_thread.Stop(std::chrono::milliseconds(0));
}

void ServiceLink::Send(std::function<void(CommandPipe&)> command, Sent done,
                       std::shared_ptr<const StopSignal> withdrawn) {
    Post([this, command = std::move(command)] { command(m_commands); }, std::move(done), std::move(withdrawn));
}

void ServiceLink::SendToFilter(std::function<void(FilterQueue&)> command, Sent done,
                               std::shared_ptr<const StopSignal> withdrawn) {
    Post([this, command = std::move(command)] { command(m_filter); }, std::move(done), std::move(withdrawn));
}

void ServiceLink::WaitUntilSent(Patience patience) {
    // How long it takes until a service that comes or goes meanwhile is heeded.
    constexpr std::chrono::milliseconds kSlice{50};
    const auto begin = std::chrono::steady_clock::now();
    const auto isTimeLeft = [&] {
        const bool isReachable = m_connector.LastCall() == PeerState::Reachable;
        return std::chrono::steady_clock::now() - begin <
               (isReachable ? patience.whileReachable : patience.whileMissing);
    };
    while (!m_thread.WaitUntilIdle(kSlice) && isTimeLeft()) {
    }
}

void ServiceLink::Post(TaskThread::Task batch, Sent done, std::shared_ptr<const StopSignal> withdrawn) {
    // There is always a completion: it also wakes the window, which then looks at the state of the service.
    m_thread.Ask<bool>(
        [this, batch = std::move(batch), withdrawn = std::move(withdrawn)] {
            m_sending.BeginBatch(withdrawn);
            batch();
            return m_connector.LastCall() == PeerState::Reachable;
        },
        [done = std::move(done)](std::optional<bool> wasThere) {
            if (done) done(wasThere.value_or(false));
        });
}

}  // namespace brennvar
