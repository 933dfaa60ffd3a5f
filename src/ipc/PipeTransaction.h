// One question and its answer over an open connection.
#pragma once

#include <chrono>
#include <cstddef>
#include <span>

#include "ipc/Pipe.h"

namespace brennvar {

// Switches to message mode and transacts. Done when the whole answer came; a short answer counts as Failed.
// Anything but Done leaves answer all zeros: half a record says nothing.
[[nodiscard]] PipeOutcome TransactWhole(PipeConnection& connection, std::span<const std::byte> request,
                                        std::span<std::byte> answer, std::chrono::milliseconds pendingLimit);

}  // namespace brennvar
