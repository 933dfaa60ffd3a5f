// One interface for each session of a user: two would take questions and notices from each other. Which one it is
// the system tells by the order in which they were started, so that there is no name that another program could
// take before, or keep.
#pragma once

#include <chrono>

#include "base/Clock.h"

namespace brennvar {

// The other processes of this program and session, as they are when this one starts; they only become fewer. Those
// that were started earlier go first.
class EarlierStarts {
public:
    virtual ~EarlierStarts() = default;
    // At least one that was started before this one has not ended yet, by the system's time of the starts. It does
    // not count one that was started before the system's clock was set back.
    [[nodiscard]] virtual bool IsAnyThere() = 0;
    // Asks the windows of all to come to the front, whenever they were started. False: none has a window that
    // answers, because it does not have one yet, is leaving, or hangs.
    [[nodiscard]] virtual bool CallForward() = 0;
};

enum class InstanceChoice {
    Run,    // this is the one
    Leave,  // another one is there, and has been called to the front
    Stuck,  // another one is there, but neither shows itself nor ends
};

// How long one that is leaving is waited for: the activity server may take 2 s, the last commands 10 s, a choice of
// skin and language that is being written 1 s, and what is left of its threads 8 s (SessionEnd), after which it
// ends in any case. The rest is for a busy machine.
inline constexpr std::chrono::seconds kLeavingPatience{25};

// Waits on the clock as long as an earlier one may still end or show its window.
[[nodiscard]] InstanceChoice ChooseInstance(EarlierStarts& earlier, Clock& clock);

}  // namespace brennvar
