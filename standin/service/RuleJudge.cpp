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

// Ones, then zeros, from the first byte on.
bool IsPrefix(Ipv4 mask) {
    bool hasEnded = false;
    for (unsigned byte = 0; byte < 4; ++byte) {
        for (unsigned bit = 8; bit-- > 0;) {
            const bool isOne = ((mask >> (8 * byte + bit)) & 1) != 0;
            if (isOne && hasEnded) return false;
            hasEnded = hasEnded || !isOne;
        }
    }
    return true;
}

bool IsDay(std::uint32_t number) {
    const std::uint32_t year = number / 10000;
    const std::uint32_t month = number / 100 % 100;
    const std::uint32_t day = number % 100;
    constexpr std::uint32_t kLengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < 1 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
    const bool isLeapYear = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return day <= kLengths[month - 1] + (month == 2 && isLeapYear ? 1U : 0U);
}

bool IsEndDamaged(const AdvancedRuleEnd& end) {
    return end.kind > 2 || (end.kind == 1 && !IsPrefix(end.mask)) || end.firstPort > end.lastPort;
}

// A field is outside its range: such a rule never matches.
bool IsDamaged(const AdvancedRuleRecord& rule) {
    constexpr std::uint32_t kMinutes = 24 * 60;
    const bool isProtocol = rule.protocol == kProtocolIp || rule.protocol == kProtocolIcmp ||
                            rule.protocol == kProtocolTcp || rule.protocol == kProtocolUdp ||
                            rule.protocol == 806 || rule.protocol == 0xFFFFFFFF;
    if (rule.isEnabled > 1 || rule.action > 1 || !isProtocol || rule.route > 2 || rule.isLogged > 1) return true;
    if (IsEndDamaged(rule.local) || IsEndDamaged(rule.remote)) return true;
    // One end by its hardware address, the other by its IPv4 address.
    if (rule.local.kind + rule.remote.kind == 3) return true;
    if (rule.restrictions > 3) return true;
    if ((rule.restrictions & 1) != 0 && (rule.firstMinute >= kMinutes || rule.lastMinute >= kMinutes)) return true;
    return (rule.restrictions & 2) != 0 &&
           (!IsDay(rule.firstDay) || !IsDay(rule.lastDay) || rule.firstDay > rule.lastDay);
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
    if (rule.isEnabled != 1 || IsDamaged(rule) || rule.user[0] != 0) return false;
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
