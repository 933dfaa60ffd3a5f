#include "ipc/PipePolicy.h"

namespace brennvar {

bool WaitForPipe(PipeConnector& connector, Clock& clock, const std::string& pipeName, const PipePolicy& policy) {
    for (int failed = 0;;) {
        if (connector.WaitForInstance(pipeName, policy.wait)) return true;
        if (++failed >= policy.attempts) return false;
        if (!clock.Sleep(policy.pause)) return false;
    }
}

std::unique_ptr<PipeConnection> WaitAndOpenPipe(PipeConnector& connector, Clock& clock, const std::string& pipeName,
                                                const PipePolicy& policy) {
    if (!WaitForPipe(connector, clock, pipeName, policy)) return nullptr;
    return connector.Open(pipeName);
}

}  // namespace brennvar
