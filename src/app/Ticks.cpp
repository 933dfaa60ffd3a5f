#include "app/Ticks.h"

#include "base/FlagWhile.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

constexpr std::array<TickInfo, Ticks::kCount> kTicks{{
    {1, 1000ms, &TickActions::RefreshFigures, false},
    {2, 1000ms, &TickActions::CheckNetwork, false},
    {3, 1000ms, &TickActions::CheckClock, false},
    {4, 100ms, &TickActions::AnswerQuestion, false},
    {5, 1000ms, &TickActions::FetchNotice, false},
    // A window that nobody sees has no corner to be sized by, and ten ticks a second cost more than all others.
    {6, 100ms, &TickActions::FollowGrip, true},
}};

}  // namespace

std::span<const TickInfo, Ticks::kCount> Ticks::Table() {
    return kTicks;
}

void Ticks::OnTimer(unsigned timer) {
    for (std::size_t index = 0; index < kCount; ++index) {
        if (kTicks[index].timer != timer || m_isUnderWay[index]) continue;
        const FlagWhile underWay(m_isUnderWay[index]);
        (m_actions.*kTicks[index].action)();
    }
}

}  // namespace brennvar
