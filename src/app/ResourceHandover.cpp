#include "app/ResourceHandover.h"

#include <utility>

namespace brennvar {

void ResourceHandover::Begin(const ResourceChoice& choice, std::function<void(bool isDelivered)> over) {
    m_over = std::move(over);
    m_since = m_clock.Elapsed();
    const auto sent = [this, number = ++m_count](bool wasThere) {
        if (number == m_count) End(wasThere);
    };
    m_commander.Send(Batch(UserCommand::SetResources, {.resources = choice}), m_alive.Guard(sent),
                     m_withdrawal.Signal());
}

void ResourceHandover::Tick() {
    if (!m_over) return;
    const bool isReachable = m_link.LastCall() == PeerState::Reachable;
    const auto limit = isReachable ? kLastCommandsPatience.whileReachable : kLastCommandsPatience.whileMissing;
    if (m_clock.Elapsed() - m_since < limit) return;
    m_withdrawal.Withdraw();
    End(false);
}

void ResourceHandover::End(bool isDelivered) {
    if (const auto over = std::exchange(m_over, nullptr)) over(isDelivered);
}

}  // namespace brennvar
