// Where the service's logs lie: one file per kind and local day.
#pragma once

#include <string>

#include "base/Clock.h"

namespace brennvar {

enum class LogKind { Traffic, Packet, Dns, Mac };

[[nodiscard]] std::string LogFilePath(const std::string& dataFolder, LogKind kind, LocalDate day);

}  // namespace brennvar
