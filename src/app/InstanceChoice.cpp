#include "app/InstanceChoice.h"

namespace brennvar {

InstanceChoice ChooseInstance(EarlierStarts& earlier, Clock& clock) {
    constexpr std::chrono::milliseconds kPause{50};
    const std::chrono::milliseconds start = clock.Elapsed();
    while (earlier.IsAnyThere()) {
        if (earlier.CallForward()) return InstanceChoice::Leave;
        if (clock.Elapsed() - start >= kLeavingPatience || !clock.Sleep(kPause)) return InstanceChoice::Stuck;
    }
    return InstanceChoice::Run;
}

}  // namespace brennvar
