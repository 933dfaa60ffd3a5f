// Connects the protection modes to the service and to its file.
#pragma once

#include "base/TaskThread.h"
#include "commands/ProtectionModes.h"
#include "ipc/ServiceLink.h"

namespace brennvar {

// The parts that read and send; the others are the caller's. Borrowed for the life of the program; readsClock is
// the clock of the reads thread.
[[nodiscard]] ProtectionModes::Parts ConnectModes(Clock& clock, const Language& language, ServiceLink& link,
                                                  TaskThread& reads, Clock& readsClock);

}  // namespace brennvar
