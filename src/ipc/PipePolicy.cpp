#include "ipc/PipePolicy.h"

#include <utility>

namespace brennvar {

CalledPipe CallPipe(PipeConnector& connector, Clock& clock, const std::string& pipeName, const PipePolicy& policy) {
    for (int failed = 0;;) {
        if (connector.WaitForInstance(pipeName, policy.wait)) {
            OpenedPipe opened = connector.Open(pipeName);
            if (!opened.isForeign) return {.isThere = true, .connection = std::move(opened.connection)};
        }
        if (++failed >= policy.attempts) return {};
        if (!clock.Sleep(policy.pause)) return {};
    }
}

}  // namespace brennvar
