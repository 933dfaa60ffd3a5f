// One record to a pipe that sends no answer.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "ipc/PipePolicy.h"

namespace brennvar {

// Waits for the pipe as the policy says, opens it and writes the bytes as one message. True when they were written;
// most callers have nothing to do when they were not. Blocks its thread for the waits of the policy.
bool PipeWriteOnce(PipeConnector& connector, Clock& clock, const std::string& pipeName,
                   std::span<const std::byte> bytes, PipePolicy policy = kWriteOncePolicy);

}  // namespace brennvar
