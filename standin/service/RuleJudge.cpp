#include "service/RuleJudge.h"

#include <cctype>

#include "ipc/DriverRecords.h"

namespace brennvar::standin {
namespace {

bool IsSame(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (std::tolower(static_cast<unsigned char>(left[i])) != std::tolower(static_cast<unsigned char>(right[i])))
            return false;
    }
    return true;
}

bool EndMatches(const AdvancedRuleEnd& end, Ipv4 address, std::uint16_t port, bool hasPorts) {
    if (end.kind > 1) return false;
    if (end.kind == 1 && (address & end.mask) != (end.address & end.mask)) return false;
    if (!hasPorts || (end.firstPort == 0 && end.lastPort == 0)) return true;
    return port >= end.firstPort && port <= end.lastPort;
}

bool TimeMatches(const AdvancedRuleRecord& rule, const SeenConnection& seen) {
    if ((rule.restrictions & 1) != 0) {
        const bool isAfterFirst = seen.minute >= rule.firstMinute;
        const bool isBeforeLast = seen.minute <= rule.lastMinute;
        const bool isOverMidnight = rule.firstMinute > rule.lastMinute;
        if (isOverMidnight ? !isAfterFirst && !isBeforeLast : !isAfterFirst || !isBeforeLast) return false;
    }
    return (rule.restrictions & 2) == 0 || (seen.day >= rule.firstDay && seen.day <= rule.lastDay);
}

bool Matches(const AdvancedRuleRecord& rule, const SeenConnection& seen) {
    if (rule.isEnabled != 1 || rule.action > 1 || rule.user[0] != 0) return false;
    if (rule.protocol != 0xFFFFFFFF && rule.protocol != kProtocolIp && rule.protocol != seen.protocol) return false;
    if (rule.route != 0 && rule.route != (seen.isIncoming ? 1U : 2U)) return false;
    if (rule.program[0] != 0 && !IsSame(TextOf(rule.program), seen.program)) return false;
    const bool hasPorts = seen.protocol == kProtocolTcp || seen.protocol == kProtocolUdp;
    return EndMatches(rule.local, seen.localAddress, seen.localPort, hasPorts) &&
           EndMatches(rule.remote, seen.remoteAddress, seen.remotePort, hasPorts) && TimeMatches(rule, seen);
}

}  // namespace

std::optional<Verdict> Judge(const std::vector<AdvancedRuleRecord>& rules, const SeenConnection& seen) {
    for (const AdvancedRuleRecord& rule : rules) {
        if (Matches(rule, seen)) return Verdict{.ruleId = rule.id, .isAllowed = rule.action == 1};
    }
    return std::nullopt;
}

}  // namespace brennvar::standin
