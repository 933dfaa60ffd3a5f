// Rules\rules_advanced.conf: any bytes yield one rule per whole record, which is written as it was read, can be put
// into words, and is asked and compared without harm.
#include "FuzzInput.h"
#include "advanced/Decision.h"
#include "advanced/WhyReport.h"
#include "rules/AdvancedRuleFile.h"
#include "rules/CoveredRules.h"
#include "rules/RuleSentence.h"
#include "support/FakeClock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    test::FakeClock clock;
    const std::string file =
        fuzz::Folder().Write(R"(\Rules\rules_advanced.conf)",
                             fuzz::Enciphered(fuzz::TextOfInput(data, size), sizeof(AdvancedRuleRecord)));
    const auto rules = LoadAdvancedRules(file, clock);
    fuzz::Require(rules && rules->size() == size / sizeof(AdvancedRuleRecord));
    const Language language(nullptr);
    // Connections that the rules are about, or nearly.
    std::vector<TrafficFacts> connections(1);
    for (const AdvancedRule& rule : *rules) {
        AdvancedRule written = DecodeRule(EncodeRule(rule));
        written.isDamaged = rule.isDamaged;
        // Of one that is damaged the ends may not go together, which is damage once more.
        fuzz::Require(written == rule);
        const std::string sentence = RuleSentence(language, rule);
        fuzz::Require(!sentence.empty() && sentence.find('\n') == sentence.npos);
        TrafficFacts& facts = connections.emplace_back();
        facts.program = rule.program;
        facts.user = rule.user;
        facts.protocol = static_cast<std::uint32_t>(rule.protocol);
        facts.direction = static_cast<TrafficDirection>(rule.route);
        facts.remoteAddress = rule.remote.address;
        facts.localAddress = rule.local.address;
        facts.remotePort = rule.remote.firstPort;
        facts.localPort = rule.local.lastPort;
        if (rule.remote.kind == RuleEnd::Kind::Hardware) facts.remoteHardware = rule.remote.hardware;
    }
    const std::vector<int> covered = FindCoveredRules(*rules, StopSignal());
    const KnownRules known{.mode = ProtectionMode::Normal, .advanced = *rules, .application = RuleAction::Ask};
    for (const TrafficFacts& facts : connections) {
        const LocalMoment moment{.day = {2026, 12, 10}, .minute = 720};
        const Decision decision = Decide(known, facts, moment);
        const WhyReport report = ReportDecision(language, decision, known, facts);
        fuzz::Require(report.decider < report.lines.size());
        // What decides is covered by nothing; what covers another rule matches whatever that one does.
        const DecisionStep& decider = decision.steps[decision.decider];
        if (decider.stage == DecisionStage::AdvancedRule) {
            fuzz::Require(covered[decider.rule] == kNotCovered);
        }
        for (std::size_t i = 0; i < rules->size(); ++i) {
            if (covered[i] == kNotCovered || MatchRule((*rules)[i], facts, moment).answer != RuleAnswer::Yes)
                continue;
            const auto above = static_cast<std::size_t>(covered[i]);
            fuzz::Require(above < i && MatchRule((*rules)[above], facts, moment).answer == RuleAnswer::Yes);
        }
    }
    return 0;
}
