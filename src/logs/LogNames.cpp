#include "logs/LogNames.h"

namespace brennvar {

LogNames LookUpNames(LogLookups& lookups, LocalDate day, Ipv4 local, Ipv4 remote) {
    return {.localName = lookups.HostName(day, local),
            .remoteName = lookups.HostName(day, remote),
            .localHardware = lookups.HardwareAddress(day, local),
            .remoteHardware = lookups.HardwareAddress(day, remote)};
}

}  // namespace brennvar
