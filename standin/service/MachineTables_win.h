// This machine's real connections, listeners and traffic, in the driver's records.
#pragma once

#include <map>
#include <vector>

#include "base/Windows_win.h"
#include "ipc/DriverRecords.h"

namespace brennvar::standin {

struct Tables {
    std::vector<ConnectionEntry> connections;
    std::vector<ListenerEntry> listeners;
};

// IPv4 TCP and UDP. The system counts no bytes per connection: the counters are 0.
[[nodiscard]] Tables ReadMachineTables();

// The byte counters of all interfaces but the loopback one. The system's own are 32 bits wide and start over.
class MachineTotals {
public:
    [[nodiscard]] TrafficTotals Read();

private:
    struct Counters {
        DWORD in;
        DWORD out;
    };
    std::map<DWORD, Counters> m_last;  // by interface index
    TrafficTotals m_totals{};
};

}  // namespace brennvar::standin
