#include "ipc/PipeTransaction.h"

#include <algorithm>

namespace brennvar {

PipeOutcome TransactWhole(PipeConnection& connection, std::span<const std::byte> request,
                          std::span<std::byte> answer, std::chrono::milliseconds pendingLimit) {
    std::size_t receivedSize = 0;
    PipeOutcome outcome = PipeOutcome::Failed;
    if (connection.SetMessageMode()) outcome = connection.Transact(request, answer, receivedSize, pendingLimit);
    if (outcome == PipeOutcome::Done && receivedSize < answer.size()) outcome = PipeOutcome::Failed;
    if (outcome != PipeOutcome::Done) std::fill(answer.begin(), answer.end(), std::byte{0});
    return outcome;
}

}  // namespace brennvar
