#include "app/InstanceChoice.h"

namespace brennvar {

InstanceChoice ChooseInstance(EarlierStarts& earlier, Clock& clock) {
    constexpr std::chrono::milliseconds kPause{50};
    const std::chrono::milliseconds start = clock.Elapsed();
    for (;;) {
        // A window decides, whichever start it is of: the order of the starts goes by a clock that may be set back.
        if (earlier.CallForward()) return InstanceChoice::Leave;
        if (!earlier.IsAnyThere()) return InstanceChoice::Run;
        if (clock.Elapsed() - start >= kLeavingPatience || !clock.Sleep(kPause)) return InstanceChoice::Stuck;
    }
}

}  // namespace brennvar
