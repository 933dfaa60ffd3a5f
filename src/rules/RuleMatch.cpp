#include "rules/RuleMatch.h"

#include <tuple>

#include "base/AsciiCase.h"

namespace brennvar {
namespace {

// What one field of a rule says.
constexpr RuleMatch kNo{RuleAnswer::No, 0};
constexpr RuleMatch kYes{RuleAnswer::Yes, 0};
constexpr RuleMatch Unknown(RuleFacts missing) {
    return {RuleAnswer::Unknown, missing};
}
constexpr RuleMatch Told(bool isSo) {
    return isSo ? kYes : kNo;
}

bool IsOneOfPorts(std::uint32_t protocol) {
    return protocol == static_cast<std::uint32_t>(RuleProtocol::Tcp) ||
           protocol == static_cast<std::uint32_t>(RuleProtocol::Udp);
}

RuleMatch MatchText(const std::string& asked, const std::string& known, RuleFact fact) {
    if (asked.empty()) return kYes;
    return known.empty() ? Unknown(fact) : Told(EqualsIgnoringCase(asked, known));
}

RuleMatch MatchProtocol(RuleProtocol asked, const std::optional<std::uint32_t>& known) {
    if (asked == RuleProtocol::Any) return kYes;
    if (!known) return Unknown(kFactProtocol);
    if (asked == RuleProtocol::Ip) return Told(*known != static_cast<std::uint32_t>(RuleProtocol::Arp));
    return Told(*known == static_cast<std::uint32_t>(asked));
}

RuleMatch MatchRoute(RuleRoute asked, TrafficDirection known) {
    if (asked == RuleRoute::Both) return kYes;
    if (known == TrafficDirection::Unknown) return Unknown(kFactDirection);
    return Told((asked == RuleRoute::Incoming) == (known == TrafficDirection::Incoming));
}

RuleMatch MatchAddress(const RuleEnd& asked, Ipv4 address, const std::optional<HardwareAddress>& hardware,
                       RuleFact fact) {
    switch (asked.kind) {
        case RuleEnd::Kind::Any: return kYes;
        case RuleEnd::Kind::Hardware: return hardware ? Told(*hardware == asked.hardware) : Unknown(fact);
        default: break;
    }
    if (asked.mask == 0) return kYes;
    return address == 0 ? Unknown(fact) : Told(((address ^ asked.address) & asked.mask) == 0);
}

RuleMatch MatchPort(const RuleEnd& asked, const std::optional<std::uint32_t>& protocol, std::uint16_t port,
                    RuleFact fact) {
    if (!asked.HasPortRange() || (asked.firstPort <= 1 && asked.lastPort == kLastPort)) return kYes;
    if (protocol && !IsOneOfPorts(*protocol)) return kYes;
    const bool isInside = port >= asked.firstPort && port <= asked.lastPort;
    if (port != 0 && isInside) return kYes;  // also where the protocol is not known
    if (!protocol) return Unknown(static_cast<RuleFacts>(kFactProtocol | (port == 0 ? fact : 0)));
    return port == 0 ? Unknown(fact) : kNo;
}

bool IsWithin(const RuleHours& hours, int minute) {
    const bool isBehindFirst = minute >= hours.first;
    const bool isBeforeLast = minute <= hours.last;
    return hours.first <= hours.last ? isBehindFirst && isBeforeLast : isBehindFirst || isBeforeLast;
}

auto Order(const LocalDate& day) {
    return std::tuple(day.year, day.month, day.day);
}

}  // namespace

RuleMatch MatchRule(const AdvancedRule& rule, const TrafficFacts& facts, const LocalMoment& moment) {
    if (!rule.isEnabled || rule.isDamaged) return kNo;
    if (rule.hours && !IsWithin(*rule.hours, moment.minute)) return kNo;
    if (rule.dates &&
        (Order(moment.day) < Order(rule.dates->first) || Order(rule.dates->last) < Order(moment.day))) {
        return kNo;
    }
    // Where it is not known, the ports are looked at as the rule's own protocol has it: another one is none of it.
    const bool isOneProtocol = rule.protocol != RuleProtocol::Any && rule.protocol != RuleProtocol::Ip;
    const auto protocol =
        facts.protocol || !isOneProtocol ? facts.protocol : static_cast<std::uint32_t>(rule.protocol);
    RuleMatch all = kYes;
    // False when it is certain that the rule does not match.
    const auto also = [&all](RuleMatch field) {
        if (field.answer == RuleAnswer::No) return false;
        if (field.answer == RuleAnswer::Unknown) {
            all = Unknown(static_cast<RuleFacts>(all.missing | field.missing));
        }
        return true;
    };
    const bool isPossible =
        also(MatchProtocol(rule.protocol, facts.protocol)) && also(MatchRoute(rule.route, facts.direction)) &&
        also(MatchPort(rule.remote, protocol, facts.remotePort, kFactRemotePort)) &&
        also(MatchPort(rule.local, protocol, facts.localPort, kFactLocalPort)) &&
        also(MatchAddress(rule.remote, facts.remoteAddress, facts.remoteHardware, kFactRemoteAddress)) &&
        also(MatchAddress(rule.local, facts.localAddress, facts.localHardware, kFactLocalAddress)) &&
        also(MatchText(rule.program, facts.program, kFactProgram)) &&
        also(MatchText(rule.user, facts.user, kFactUser));
    return isPossible ? all : kNo;
}

}  // namespace brennvar
