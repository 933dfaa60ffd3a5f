#include "commands/Commander.h"

#include <memory>
#include <utility>

namespace brennvar {

void Commander::Send(Batch batch, Sent done) {
    m_link.Send(
        [batch = std::move(batch), &language = m_language](CommandPipe& pipe) { batch.SendTo(pipe, language); },
        std::move(done));
}

void Commander::SendProtected(Batch batch, CommandOutcome outcome) {
    const UserCommand command = batch.Info().command;
    auto allowed = [this, batch = std::move(batch), allowed = std::move(outcome.allowed),
                    sent = std::move(outcome.sent)] {
        if (allowed) allowed();
        Send(batch, sent);
    };
    AskFor(command, std::move(allowed), std::move(outcome.refused));
}

void Commander::AskFor(UserCommand command, std::function<void()> allowed, std::function<void()> refused) {
    if (!InfoOf(command).isProtected) return allowed();
    if (m_gate) return m_gate->Ask(std::move(allowed), std::move(refused));
    if (refused) refused();
}

void Commander::SetFilterPort(std::uint32_t port, Sent done) {
    m_link.SendToFilter([port](FilterQueue& queue) { queue.FILTER_SET_PROXY_PORT(port); }, std::move(done));
}

}  // namespace brennvar
