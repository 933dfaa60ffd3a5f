#include "config/ResourceChoice.h"

namespace brennvar {

bool ApplyResourceChoice(const ResourceChoice& current, const ResourceChoice& chosen,
                         const ResourceChoiceSteps& steps) {
    if (chosen == current) return false;
    const bool wantsRestart = steps.askForRestart();
    steps.send(chosen);
    // Asked last: the question lets other things begin.
    return wantsRestart && !steps.isBusy();
}

}  // namespace brennvar
