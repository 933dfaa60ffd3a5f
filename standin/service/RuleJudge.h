// What the advanced rules say to a connection, as the service sees it: from top to bottom, the first enabled rule
// that matches decides. Written for the stand-in alone, so that a mistake of the interface's own evaluation cannot
// hide here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/Ipv4.h"
#include "ipc/AdvancedRuleRecord.h"

namespace brennvar::standin {

struct SeenConnection {
    std::uint32_t protocol;
    bool isIncoming;
    Ipv4 localAddress;
    Ipv4 remoteAddress;
    // Host order.
    std::uint16_t localPort;
    std::uint16_t remotePort;
    std::string program;
    // Local time: the minute of the day, and year * 10000 + month * 100 + day.
    std::uint32_t minute = 0;
    std::uint32_t day = 0;
};

struct Verdict {
    std::uint32_t ruleId;
    bool isAllowed;
};

// A rule that names a user, or an end by its hardware address, matches nothing: the stand-in knows neither.
// Nor does one with a field outside its range (ipc/AdvancedRuleRecord.h).
[[nodiscard]] std::optional<Verdict> Judge(const std::vector<AdvancedRuleRecord>& rules,
                                           const SeenConnection& seen);

}  // namespace brennvar::standin
