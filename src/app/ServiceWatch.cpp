#include "app/ServiceWatch.h"

namespace brennvar {

void ServiceWatch::CallGiven(Time now) {
    if (m_open++ == 0) m_waitingSince = now;
}

void ServiceWatch::CallOver(Time now, std::optional<bool> found) {
    --m_open;
    // A call that took too long found nobody, whatever it was for; that also holds until the next one proves
    // better.
    if (!found && now - m_waitingSince >= kPatience) found = false;
    if (found) m_last = *found ? PeerState::Reachable : PeerState::Missing;
    m_waitingSince = now;
}

PeerState ServiceWatch::State(Time now) const {
    if (m_open > 0 && now - m_waitingSince >= kPatience) return PeerState::Missing;
    return m_last;
}

}  // namespace brennvar
