#include "ipc/PipeTransaction.h"

#include <algorithm>

namespace brennvar {

bool TransactWhole(PipeConnection& connection, std::span<const std::byte> request, std::span<std::byte> answer,
                   std::chrono::milliseconds pendingLimit) {
    std::size_t receivedSize = 0;
    if (connection.SetMessageMode() &&
        connection.Transact(request, answer, receivedSize, pendingLimit) == PipeOutcome::Done &&
        receivedSize >= answer.size()) {
        return true;
    }
    std::fill(answer.begin(), answer.end(), std::byte{0});
    return false;
}

}  // namespace brennvar
