#include "ipc/PipeWriteOnce.h"

namespace brennvar {

bool PipeWriteOnce(PipeConnector& connector, Clock& clock, const std::string& pipeName,
                   std::span<const std::byte> bytes, PipePolicy policy) {
    const auto connection = CallPipe(connector, clock, pipeName, policy).connection;
    return connection && connection->Write(bytes, policy.pendingLimit) == PipeOutcome::Done;
}

}  // namespace brennvar
