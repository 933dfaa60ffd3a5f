// Whether an advanced rule matches a connection. Facts may be missing, so there are three answers: a rule that asks
// for what is not known is neither a match nor none.
#pragma once

#include <cstdint>

#include "base/TrafficFacts.h"
#include "rules/AdvancedRule.h"

namespace brennvar {

enum class RuleAnswer : std::uint8_t { No, Yes, Unknown };

// Facts that a rule asks for, as bits of a set.
enum RuleFact : std::uint16_t {
    kFactProgram = 1 << 0,
    kFactUser = 1 << 1,
    kFactProtocol = 1 << 2,
    kFactDirection = 1 << 3,
    kFactLocalAddress = 1 << 4,
    kFactRemoteAddress = 1 << 5,
    kFactLocalPort = 1 << 6,
    kFactRemotePort = 1 << 7,
};
using RuleFacts = std::uint16_t;

struct RuleMatch {
    RuleAnswer answer = RuleAnswer::No;
    RuleFacts missing = 0;  // when it is Unknown: what the answer depends on
    friend bool operator==(const RuleMatch&, const RuleMatch&) = default;
};

// Whether a rule of this protocol says anything about ports: one for every protocol does, of those that have ports.
[[nodiscard]] constexpr bool AsksForPorts(RuleProtocol protocol) {
    return HasPorts(protocol) || protocol == RuleProtocol::Ip || protocol == RuleProtocol::Any;
}

// Ports of connections are 1 to this: 0 stands for none.
inline constexpr std::uint16_t kLastPort = 65535;

// Rules that are off or damaged match nothing. Of the rest all that is asked for must be so: one thing that
// certainly is not makes it No, whatever is missing. docs/rules.md tells what each field means. The moment is that
// of the connection; facts.when is not looked at.
[[nodiscard]] RuleMatch MatchRule(const AdvancedRule& rule, const TrafficFacts& facts, const LocalMoment& moment);

}  // namespace brennvar
