#include "app/ServiceLink.h"

namespace brennvar {

ServiceLink::ServiceLink(std::function<void()> wake)
    : m_thread(std::move(wake)),
      m_clock(m_thread.Stopping()),
      m_connector(m_thread.Stopping()),
      m_commands(m_connector, m_clock),
      m_pipes(m_connector, m_clock) {}

// Before the members that its tasks use go.
ServiceLink::~ServiceLink() {
    m_thread.Stop(std::chrono::milliseconds(0));
}

void ServiceLink::Send(std::function<void(CommandPipe&)> command) {
    m_watch.CallGiven(Now());
    m_thread.Post([this, command = std::move(command)] { command(m_commands); },
                  [this] { m_watch.CallOver(Now(), std::nullopt); });
}

void ServiceLink::FetchTrayText(std::function<void(std::optional<std::string>)> done) {
    auto found = std::make_shared<std::optional<bool>>();
    Post<std::optional<std::string>>(
        [found](ServicePipes& pipes) {
            std::optional<std::string> text = pipes.FetchTrayText();
            *found = pipes.LastWaitFoundService();
            return text;
        },
        std::move(done), found);
}

}  // namespace brennvar
