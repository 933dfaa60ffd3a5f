// One question and its answer over an open connection.
#pragma once

#include <chrono>
#include <cstddef>
#include <span>

#include "ipc/Pipe.h"

namespace brennvar {

// Switches to message mode and transacts. True when the whole answer came. Anything else, a short answer included,
// leaves answer all zeros: half a record says nothing.
[[nodiscard]] bool TransactWhole(PipeConnection& connection, std::span<const std::byte> request,
                                 std::span<std::byte> answer, std::chrono::milliseconds pendingLimit);

}  // namespace brennvar
