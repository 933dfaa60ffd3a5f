// Judges from the calls to the service whether it is there. The calls themselves run one after another on the link
// thread; this only hears when they were given and when they were over, on the user-interface thread.
#pragma once

#include <chrono>
#include <optional>

namespace brennvar {

enum class PeerState { Unknown, Reachable, Missing };

class ServiceWatch {
public:
    using Time = std::chrono::steady_clock::time_point;

    // A call that takes longer than this waits for a service that is not there: an answer takes milliseconds.
    static constexpr std::chrono::milliseconds kPatience{3000};

    void CallGiven(Time now);
    // found: whether the call met the service; nothing for a call that cannot tell.
    void CallOver(Time now, std::optional<bool> found);
    [[nodiscard]] PeerState State(Time now) const;

private:
    PeerState m_last = PeerState::Unknown;
    int m_open = 0;         // calls that were given and are not over
    Time m_waitingSince{};  // when the oldest open call got its turn, as far as can be seen from here
};

}  // namespace brennvar
