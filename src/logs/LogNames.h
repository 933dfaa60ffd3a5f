// What the logs of a day know of the two ends of a connection or of a record.
#pragma once

#include <string>

#include "base/Ipv4.h"
#include "logs/Lookups.h"

namespace brennvar {

// Empty: unknown.
struct LogNames {
    std::string localName;
    std::string remoteName;
    std::string localHardware;
    std::string remoteHardware;
};

[[nodiscard]] LogNames LookUpNames(LogLookups& lookups, LocalDate day, Ipv4 local, Ipv4 remote);

}  // namespace brennvar
