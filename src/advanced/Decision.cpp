#include "advanced/Decision.h"

#include <algorithm>

namespace brennvar {
namespace {

DecisionStep BlockedStep(std::span<const Ipv4> blocked, Ipv4 remote) {
    DecisionStep step{.stage = DecisionStage::BlockedAddress};
    if (remote == 0 && !blocked.empty()) {
        step.answer = RuleAnswer::Unknown;
        step.missing = kFactRemoteAddress;
    } else if (std::ranges::find(blocked, remote) != blocked.end()) {
        step.answer = RuleAnswer::Yes;
    }
    if (step.answer != RuleAnswer::No) step.outcome = Outcome::Deny;
    return step;
}

DecisionStep ModeStep(std::optional<ProtectionMode> mode) {
    DecisionStep step{.stage = DecisionStage::Mode};
    if (!mode) {
        step.answer = RuleAnswer::Unknown;
    } else if (*mode != ProtectionMode::Normal) {
        step.answer = RuleAnswer::Yes;
        step.outcome = *mode == ProtectionMode::AllowAll ? Outcome::Allow : Outcome::Deny;
    }
    return step;
}

DecisionStep ApplicationStep(std::optional<RuleAction> action, bool isProgramKnown) {
    DecisionStep step{.stage = DecisionStage::ApplicationRule};
    if (!isProgramKnown || !action) {
        step.answer = RuleAnswer::Unknown;
        step.missing = isProgramKnown ? 0 : kFactProgram;
    } else if (*action == RuleAction::Deny || *action == RuleAction::Allow) {
        step.answer = RuleAnswer::Yes;
        step.outcome = *action == RuleAction::Allow ? Outcome::Allow : Outcome::Deny;
    }
    return step;
}

void AddAdvancedSteps(const KnownRules& known, const TrafficFacts& facts, const LocalMoment& moment,
                      Decision& decision) {
    if (!known.advanced) {
        decision.steps.push_back({.stage = DecisionStage::AdvancedRule, .answer = RuleAnswer::Unknown});
        return;
    }
    bool hasDecided = false;
    std::size_t behind = 0;           // the one that decides
    std::size_t inFront = 0;          // of it, those that may decide
    bool isTold[2] = {false, false};  // of those in front: whether one that denies, and one that allows
    for (std::size_t i = 0; i < known.advanced->size(); ++i) {
        const AdvancedRule& rule = (*known.advanced)[i];
        const RuleMatch match = MatchRule(rule, facts, moment);
        if (match.answer == RuleAnswer::No) {
            ++decision.notMatching;
            continue;
        }
        const bool isDecider = !hasDecided && match.answer == RuleAnswer::Yes;
        bool& isActionTold = isTold[rule.action == AdvancedAction::Allow ? 1 : 0];
        const bool isKept =
            isDecider || (hasDecided ? behind < kMostRulesBehind : inFront < kMostRulesInFront || !isActionTold);
        if (!isKept) {
            ++(match.answer == RuleAnswer::Yes ? decision.leftOut : decision.mayLeftOut);
        } else {
            ++(hasDecided ? behind : inFront);
            isActionTold = true;
            hasDecided = hasDecided || isDecider;
            decision.steps.push_back(
                {.stage = DecisionStage::AdvancedRule,
                 .answer = match.answer,
                 .missing = match.missing,
                 .outcome = rule.action == AdvancedAction::Allow ? Outcome::Allow : Outcome::Deny,
                 .rule = i});
        }
    }
}

}  // namespace

bool Decision::IsDeciderCertain() const {
    return std::none_of(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(decider),
                        [](const DecisionStep& step) { return step.answer == RuleAnswer::Unknown; });
}

Decision Decide(const KnownRules& known, const TrafficFacts& facts, const LocalMoment& moment) {
    Decision decision;
    decision.steps.reserve(16);
    decision.steps.push_back(BlockedStep(known.blocked, facts.remoteAddress));
    decision.steps.push_back(ModeStep(known.mode));
    AddAdvancedSteps(known, facts, moment, decision);
    decision.steps.push_back(ApplicationStep(known.application, !facts.program.empty()));
    decision.steps.push_back(
        {.stage = DecisionStage::Question, .answer = RuleAnswer::Yes, .outcome = Outcome::Ask});

    const auto decides = std::ranges::find(decision.steps, RuleAnswer::Yes, &DecisionStep::answer);
    decision.decider = static_cast<std::size_t>(decides - decision.steps.begin());
    for (std::size_t i = 0; i <= decision.decider; ++i) decision.steps[i].isReached = true;
    const bool isTheSame = std::all_of(decision.steps.begin(), decides, [&](const DecisionStep& step) {
        return step.answer == RuleAnswer::No || step.outcome == decides->outcome;
    });
    if (isTheSame) decision.outcome = decides->outcome;
    return decision;
}

}  // namespace brennvar
