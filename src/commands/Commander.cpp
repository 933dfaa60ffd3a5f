#include "commands/Commander.h"

#include <memory>
#include <utility>

namespace brennvar {

void Commander::Send(Batch batch, Sent done, std::shared_ptr<const StopSignal> withdrawn) {
    m_link.Send(
        [batch = std::move(batch), &language = m_language](CommandPipe& pipe) { batch.SendTo(pipe, language); },
        std::move(done), std::move(withdrawn));
}

void Commander::SendProtected(Batch batch, CommandOutcome outcome) {
    const UserCommand command = batch.Info().command;
    auto allowed = [this, batch = std::move(batch), allowed = std::move(outcome.allowed),
                    sent = std::move(outcome.sent), withdrawn = std::move(outcome.withdrawn)] {
        if (allowed) allowed();
        Send(batch, sent, withdrawn);
    };
    AskFor(command, std::move(allowed), std::move(outcome.refused));
}

void Commander::AskFor(UserCommand command, std::function<void()> allowed, std::function<void()> refused) {
    if (!InfoOf(command).isProtected) return allowed();
    if (m_gate) return m_gate->Ask(std::move(allowed), std::move(refused));
    if (refused) refused();
}

void Commander::SetFilterPort(std::uint32_t port, Sent done, std::shared_ptr<const StopSignal> withdrawn) {
    m_link.SendToFilter([port](FilterQueue& queue) { queue.FILTER_SET_PROXY_PORT(port); }, std::move(done),
                        std::move(withdrawn));
}

void Commander::AddSite(std::string name, Sent done, std::shared_ptr<const StopSignal> withdrawn) {
    m_link.SendToFilter([name = std::move(name)](FilterQueue& queue) { queue.FILTER_ADD_ENTRY(name); },
                        std::move(done), std::move(withdrawn));
}

void Commander::RemoveSites(std::vector<std::uint32_t> ids, Sent done,
                            std::shared_ptr<const StopSignal> withdrawn) {
    m_link.SendToFilter(
        [ids = std::move(ids)](FilterQueue& queue) {
            for (const std::uint32_t id : ids) {
                // Each wait for a service that is missing would hold up whatever comes behind.
                if (!queue.FILTER_DELETE_ENTRY(id)) return;
            }
        },
        std::move(done), std::move(withdrawn));
}

}  // namespace brennvar
