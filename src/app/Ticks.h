// The timers of the control center: a table of what is done how often, and which tick may do it. A tick does
// nothing while the last one of its timer is still under way, as it is when its action shows a dialog, which pumps
// messages.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <span>
#include <utility>

namespace brennvar {

// What the ticks do; each is one timer.
class TickActions {
public:
    virtual ~TickActions() = default;
    virtual void RefreshFigures() = 0;  // traffic, the state of the service, the mode, connections
    virtual void CheckNetwork() = 0;    // has an address come or gone?
    virtual void CheckClock() = 0;      // has somebody set the clock?
    virtual void AnswerQuestion() = 0;  // does the driver ask about a connection?
    virtual void FetchNotice() = 0;     // has the service something to say?
    virtual void FollowGrip() = 0;      // is the mouse over the corner by which the window is sized?
};

struct TickInfo {
    unsigned timer;  // its number in the window
    std::chrono::milliseconds period;
    void (TickActions::*action)();
    bool onlyWhileSeen;  // it rests while the window is hidden or minimised
};

class Ticks {
public:
    static constexpr std::size_t kCount = 6;

    // Borrowed.
    explicit Ticks(TickActions& actions) : m_actions(actions) {}
    Ticks(const Ticks&) = delete;
    Ticks& operator=(const Ticks&) = delete;

    [[nodiscard]] static std::span<const TickInfo, kCount> Table();
    // Whether the window is on the screen. True when that has changed, so that timers are to be started or ended.
    [[nodiscard]] bool SetSeen(bool isSeen) { return std::exchange(m_isSeen, isSeen) != isSeen; }
    // As the window was seen last.
    [[nodiscard]] bool IsWanted(const TickInfo& tick) const { return m_isSeen || !tick.onlyWhileSeen; }
    // A timer has gone off. An unknown one is none of these, and one may still come after it was ended.
    void OnTimer(unsigned timer);

private:
    TickActions& m_actions;
    std::array<bool, kCount> m_isUnderWay{};
    bool m_isSeen = false;
};

}  // namespace brennvar
