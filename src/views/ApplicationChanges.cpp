#include "views/ApplicationChanges.h"

#include <algorithm>
#include <utility>

namespace brennvar {

std::uint64_t ApplicationChanges::Add(ApplicationChange change) {
    m_waiting.push_back(std::move(change));
    return ++m_last;
}

void ApplicationChanges::Carry() {
    if (m_isAsking || m_waiting.empty()) return;
    m_isAsking = true;
    m_commander.AskFor(
        UserCommand::SetApplicationRules, [this] { Enqueue(); },
        [this] {
            m_waiting.clear();
            Enqueue();  // nothing, but behind what is being sent: numbers are over in their order
        });
}

void ApplicationChanges::Enqueue() {
    m_isAsking = false;
    m_groups.push_back({.changes = std::exchange(m_waiting, {}), .last = m_last});
    if (m_groups.size() == 1) SendPiece();
}

void ApplicationChanges::SendPiece() {
    Group& group = m_groups.front();
    const auto first = group.changes.begin() + static_cast<std::ptrdiff_t>(group.sent);
    const std::size_t count = std::min(kPiece, group.changes.size() - group.sent);
    group.sent += count;
    m_commander.Send(
        Batch(UserCommand::SetApplicationRules,
              {.applications = {first, first + static_cast<std::ptrdiff_t>(count)}}),
        [this, round = m_round](bool wasThere) {
            if (round == m_round) OnPieceSent(wasThere);
        },
        m_withdrawal.Signal());
}

void ApplicationChanges::GiveUp() {
    if (m_groups.empty()) return;
    m_withdrawal.Withdraw();
    ++m_round;
    m_over = m_groups.back().last;
    m_groups.clear();
}

void ApplicationChanges::OnPieceSent(bool wasThere) {
    if (!wasThere) {
        GiveUp();  // the next piece would be waited for as long again
        if (m_watcher) m_watcher->OnChangesOver();
        return;
    }
    const Group& group = m_groups.front();
    const bool isOver = group.sent == group.changes.size();
    if (isOver) {
        m_over = group.last;
        m_groups.pop_front();
    }
    if (!m_groups.empty()) SendPiece();
    if (isOver && m_watcher) m_watcher->OnChangesOver();
}

}  // namespace brennvar
