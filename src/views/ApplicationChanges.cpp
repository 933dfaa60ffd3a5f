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
    m_rounds.push_back({.changes = std::exchange(m_waiting, {}), .last = m_last});
    if (m_rounds.size() == 1) SendPiece();
}

void ApplicationChanges::SendPiece() {
    Round& round = m_rounds.front();
    const auto first = round.changes.begin() + static_cast<std::ptrdiff_t>(round.sent);
    const std::size_t count = std::min(kPiece, round.changes.size() - round.sent);
    round.sent += count;
    m_commander.Send(Batch(UserCommand::SetApplicationRules,
                           {.applications = {first, first + static_cast<std::ptrdiff_t>(count)}}),
                     [this](bool) { OnPieceSent(); });
}

void ApplicationChanges::OnPieceSent() {
    const Round& round = m_rounds.front();
    const bool isOver = round.sent == round.changes.size();
    if (isOver) {
        m_over = round.last;
        m_rounds.pop_front();
    }
    if (!m_rounds.empty()) SendPiece();
    if (isOver && onOver) onOver();
}

}  // namespace brennvar
