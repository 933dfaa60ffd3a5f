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
    m_parts.ask([this] { Send(); },
                [this] {
                    m_waiting.clear();
                    Send();  // nothing, but behind what is being sent: numbers are over in their order
                });
}

void ApplicationChanges::Send() {
    m_isAsking = false;
    m_parts.send(std::exchange(m_waiting, {}), [this, last = m_last] {
        m_over = std::max(m_over, last);
        if (onOver) onOver();
    });
}

}  // namespace brennvar
