// What decides about a connection, and what would if that did not: a blocked address, the protection mode, the
// advanced rules from top to bottom, the rule of the program, else the question. It is told from what the interface
// has read; the service decides for itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "base/TrafficFacts.h"
#include "commands/ProtectionMode.h"
#include "rules/AdvancedRule.h"
#include "rules/ApplicationRuleRecord.h"
#include "rules/RuleMatch.h"

namespace brennvar {

enum class DecisionStage : std::uint8_t { BlockedAddress, Mode, AdvancedRule, ApplicationRule, Question };
enum class Outcome : std::uint8_t { Deny, Allow, Ask };

// All that is borrowed need only live during the call.
struct KnownRules {
    std::span<const Ipv4> blocked{};  // those in force that are known of
    // Nothing in these three: it could not be read.
    std::optional<ProtectionMode> mode{};
    std::optional<std::span<const AdvancedRule>> advanced{};
    std::optional<RuleAction> application{};  // of the program that is asked about
};

struct DecisionStep {
    DecisionStage stage{};
    // Yes: it decides, or would, were it asked. Unknown: that depends on facts that are missing, or, when none are
    // named, on what could not be read.
    RuleAnswer answer = RuleAnswer::No;
    RuleFacts missing = 0;
    // What comes of it when it decides. Nothing: that is not known either; or the step certainly does not decide.
    std::optional<Outcome> outcome{};
    std::size_t rule = 0;    // of an advanced rule: its place, from 0
    bool isReached = false;  // nothing above certainly decides
    friend bool operator==(const DecisionStep&, const DecisionStep&) = default;
};

// As many advanced rules are told of that would decide were the one above them not there: nobody reads a longer
// list.
inline constexpr std::size_t kMostRulesBehind = 500;
// As many are told of that may decide before the one that does: each is put into words while the user types. Of
// those that deny and of those that allow the first one is told of in any case, since the outcome depends on it.
inline constexpr std::size_t kMostRulesInFront = 500;

struct Decision {
    // In their order: one of each stage, but of the advanced rules those that match or may match, and none when
    // there is none. The last one is the question, which always decides in the end.
    std::vector<DecisionStep> steps;
    std::size_t decider = 0;  // the first of the steps that certainly decides
    // What comes of it. Nothing: a step above the decider may decide, and otherwise.
    std::optional<Outcome> outcome;
    // Advanced rules that are not among the steps.
    std::size_t notMatching = 0;  // and those that are off or damaged
    // Those above the two limits:
    std::size_t leftOut = 0;     // that match
    std::size_t mayLeftOut = 0;  // that may match

    // Whether it is certain which step decides.
    [[nodiscard]] bool IsDeciderCertain() const;
    friend bool operator==(const Decision&, const Decision&) = default;
};

// Pure. 20,000 rules take less than 5 ms.
[[nodiscard]] Decision Decide(const KnownRules& known, const TrafficFacts& facts, const LocalMoment& moment);

}  // namespace brennvar
