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
    m_parts.ask([this] { Enqueue(); },
                [this] {
                    m_waiting.clear();
                    Enqueue();  // nothing, but behind what is being sent: numbers are over in their order
                });
}

void ApplicationChanges::Enqueue() {
    m_isAsking = false;
    m_batches.push_back({.changes = std::exchange(m_waiting, {}), .last = m_last});
    if (m_batches.size() == 1) SendPiece();
}

void ApplicationChanges::SendPiece() {
    Batch& batch = m_batches.front();
    const auto first = batch.changes.begin() + static_cast<std::ptrdiff_t>(batch.sent);
    const std::size_t count = std::min(kPiece, batch.changes.size() - batch.sent);
    batch.sent += count;
    m_parts.send({first, first + static_cast<std::ptrdiff_t>(count)}, [this] { OnPieceSent(); });
}

void ApplicationChanges::OnPieceSent() {
    const Batch& batch = m_batches.front();
    const bool isOver = batch.sent == batch.changes.size();
    if (isOver) {
        m_over = batch.last;
        m_batches.pop_front();
    }
    if (!m_batches.empty()) SendPiece();
    if (isOver && onOver) onOver();
}

}  // namespace brennvar
