#include "advanced/WhyReport.h"

#include <array>
#include <string_view>

#include "advanced/StoredRules.h"
#include "base/DisplayName.h"
#include "config/ResourceIds.h"
#include "rules/RuleSentence.h"

namespace brennvar {
namespace {

Tone ToneOf(Outcome outcome) {
    constexpr std::array kTones = {Tone::Deny, Tone::Allow, Tone::Ask};
    return kTones[static_cast<std::size_t>(outcome)];
}

// "User, Protocol"
std::string NamesOf(const Language& language, RuleFacts missing) {
    constexpr std::pair<RuleFact, WhyField> kFields[] = {
        {kFactProgram, WhyField::Program},           {kFactUser, WhyField::User},
        {kFactProtocol, WhyField::Protocol},         {kFactDirection, WhyField::Direction},
        {kFactLocalAddress, WhyField::LocalAddress}, {kFactRemoteAddress, WhyField::RemoteAddress},
        {kFactLocalPort, WhyField::LocalPort},       {kFactRemotePort, WhyField::RemotePort}};
    std::string names;
    for (const auto& [fact, field] : kFields) {
        if ((missing & fact) == 0) continue;
        std::string label = WhyLabel(language, field);
        if (label.ends_with(':')) label.pop_back();
        names.append(names.empty() ? "" : ", ").append(label);
    }
    return names;
}

class Reporter {
public:
    Reporter(const Language& language, const Decision& decision, const KnownRules& known, const TrafficFacts& facts)
        : m_language(language), m_decision(decision), m_known(known), m_facts(facts) {}

    WhyReport Report() {
        WhyReport report;
        report.answer = Answer();
        if (m_decision.outcome) report.tone = ToneOf(*m_decision.outcome);
        for (std::size_t i = 0; i < m_decision.steps.size(); ++i) {
            const DecisionStep& step = m_decision.steps[i];
            if (step.stage == DecisionStage::ApplicationRule) AddOtherRules(report.lines);
            if (i == m_decision.decider) report.decider = report.lines.size();
            report.lines.push_back(LineOf(step, i == m_decision.decider));
        }
        return report;
    }

private:
    [[nodiscard]] std::string Get(const Text& text) const { return m_language.GetText(text); }
    [[nodiscard]] const AdvancedRule& RuleOf(const DecisionStep& step) const {
        return (*m_known.advanced)[step.rule];
    }
    [[nodiscard]] std::string ProgramName() const { return OneLine(FileNameOf(m_facts.program)); }

    [[nodiscard]] std::string Answer() const {
        if (!m_decision.outcome) {
            return Get(Text{1944, "It cannot be told: that depends on what is not known here."});
        }
        const bool isAllowed = *m_decision.outcome == Outcome::Allow;
        if (!m_decision.IsDeciderCertain()) {
            return Get(isAllowed
                           ? Text{1946, "Allowed in any case; by which rule, depends on what is not known here."}
                           : Text{1945, "Denied in any case; by which rule, depends on what is not known here."});
        }
        const DecisionStep& step = m_decision.steps[m_decision.decider];
        switch (step.stage) {
            case DecisionStage::BlockedAddress: return Get(Text{1936, "Denied: this address is blocked."});
            case DecisionStage::Mode:
                return Get(isAllowed ? Text{1938, "Allowed: the protection mode allows everything."}
                                     : Text{1937, "Denied: the protection mode blocks everything."});
            case DecisionStage::AdvancedRule:
                return FillText(Get(isAllowed ? Text{1940, "Allowed by the advanced rule '%1'."}
                                              : Text{1939, "Denied by the advanced rule '%1'."}),
                                {NameOf(step)});
            case DecisionStage::ApplicationRule:
                return FillText(Get(isAllowed ? Text{1942, "Allowed by the rule of the program %1."}
                                              : Text{1941, "Denied by the rule of the program %1."}),
                                {ProgramName()});
            default: return Get(Text{1943, "You would be asked."});
        }
    }

    [[nodiscard]] std::string NameOf(const DecisionStep& step) const {
        const std::string& description = RuleOf(step).description;
        return description.empty() ? std::to_string(step.rule + 1) : OneLine(description);
    }

    [[nodiscard]] std::string Verdict(const DecisionStep& step, bool isDecider) const {
        switch (step.answer) {
            case RuleAnswer::No: return Get(Text{1949, "does not apply"});
            case RuleAnswer::Unknown:
                return step.missing == 0
                           ? Get(Text{1951, "cannot be read"})
                           : FillText(Get(Text{1950, "not known: %1"}), {NamesOf(m_language, step.missing)});
            default: return Get(isDecider ? Text{1947, "decides"} : Text{1948, "would decide"});
        }
    }

    [[nodiscard]] WhyLine LineOf(const DecisionStep& step, bool isDecider) const {
        WhyLine line;
        line.verdict = Verdict(step, isDecider);
        line.isDecider = isDecider;
        line.tone = step.answer == RuleAnswer::No || !step.isReached ? Tone::Muted
                    : step.outcome                                   ? ToneOf(*step.outcome)
                                                                     : Tone::Plain;
        switch (step.stage) {
            case DecisionStage::BlockedAddress:
                line.stage = Get(Text{1952, "Blocked address"});
                if (m_facts.remoteAddress != 0) line.says = FormatIpv4(m_facts.remoteAddress);
                break;
            case DecisionStage::Mode:
                line.stage = Get(Text{1332, "Protection mode"});
                if (m_known.mode) line.says = Get(ProtectionModeText(*m_known.mode));
                break;
            case DecisionStage::AdvancedRule: DescribeRule(step, line); break;
            case DecisionStage::ApplicationRule:
                line.stage = Get(Text{1955, "Rule of the program"});
                line.says = SaysOfApplication();
                if (!m_facts.program.empty()) line.link = WhyLink{IDM_APPLICATIONS, m_facts.program};
                break;
            case DecisionStage::Question:
                line.stage = Get(Text{1956, "Question"});
                line.says = Get(Text{1957, "You are asked."});
                break;
        }
        return line;
    }

    void DescribeRule(const DecisionStep& step, WhyLine& line) const {
        if (!m_known.advanced) {
            line.stage = Get(Text{47, "Advanced"});
            return;
        }
        const AdvancedRule& rule = RuleOf(step);
        line.stage = FillText(Get(Text{1954, "Advanced rule %1"}), {std::to_string(step.rule + 1)});
        line.says = RuleSentence(m_language, rule);
        if (!rule.description.empty()) line.says = OneLine(rule.description) + ": " + line.says;
        line.link = WhyLink{IDM_ADVANCED, KeyOfRule(*m_known.advanced, step.rule)};
    }

    [[nodiscard]] std::string SaysOfApplication() const {
        if (m_facts.program.empty() || !m_known.application) return ProgramName();
        const std::string name = ProgramName() + ": ";
        switch (*m_known.application) {
            case RuleAction::Deny: return name + Get(Text{1, "Deny"});
            case RuleAction::Allow: return name + Get(Text{2, "Allow"});
            default: return name + Get(Text{1958, "none that allows or denies"});
        }
    }

    // One line for all that do not count, where they would stand.
    void AddOtherRules(std::vector<WhyLine>& lines) const {
        if (!m_known.advanced) return;
        WhyLine line{
            .stage = Get(Text{1959, "Other advanced rules"}), .says = {}, .verdict = {}, .tone = Tone::Muted};
        line.says = std::to_string(m_decision.notMatching);
        line.verdict = Get(Text{1949, "does not apply"});
        line.link = WhyLink{.page = IDM_ADVANCED};
        if (m_decision.notMatching > 0 || m_known.advanced->empty()) lines.push_back(line);
        line.says = std::to_string(m_decision.leftOut);
        line.verdict = Get(Text{1948, "would decide"});
        if (m_decision.leftOut > 0) lines.push_back(line);
        line.says = std::to_string(m_decision.mayLeftOut);
        line.verdict = Get(Text{2141, "may decide"});
        if (m_decision.mayLeftOut > 0) lines.push_back(line);
    }

    const Language& m_language;
    const Decision& m_decision;
    const KnownRules& m_known;
    const TrafficFacts& m_facts;
};

}  // namespace

WhyReport ReportDecision(const Language& language, const Decision& decision, const KnownRules& known,
                         const TrafficFacts& facts) {
    return Reporter(language, decision, known, facts).Report();
}

std::string WhyLabel(const Language& language, WhyField field) {
    switch (field) {
        case WhyField::Program: return language.GetText(1681, "Program:");
        case WhyField::Protocol: return language.GetText(484, "Protocol:");
        case WhyField::Direction: return language.GetText(1504, "Direction:");
        case WhyField::RemoteAddress: return language.GetText(2160, "Remote address:");
        case WhyField::RemotePort: return language.GetText(2161, "Remote port:");
        case WhyField::LocalAddress: return language.GetText(2162, "Local address:");
        case WhyField::LocalPort: return language.GetText(2163, "Local port:");
        case WhyField::User: return language.GetText(2164, "User:");
        case WhyField::Day: return language.GetText(1427, "Day:");
        default: return language.GetText(1502, "Time:");
    }
}

std::string WhyRemark(const Language& language) {
    return language.GetText(2165,
                            "This is what the rules say that can be read here. The service decides for itself: it "
                            "may have blocked other addresses.");
}

}  // namespace brennvar
