#include "advanced/Decision.h"

#include <gtest/gtest.h>

#include <functional>
#include <sstream>

#include "support/RuleWords.h"

namespace brennvar {
namespace {

// What is known, in words: "mode=block app=allow blocked=1.2.3.4"; "?" for what could not be read.
struct Setting {
    Setting(const std::string& words, const std::string& lines) {
        std::istringstream stream(lines);
        for (std::string line; std::getline(stream, line, ';');) rules.push_back(test::RuleIn(line));
        has = [words](const char* word) { return words.find(word) != words.npos; };
        for (const char* address : {"192.0.2.1", "192.0.2.2"}) {
            if (has(("blocked=" + std::string(address)).c_str())) blocked.push_back(ParseIpv4(address).value());
        }
    }
    [[nodiscard]] KnownRules Known() const {
        KnownRules known{.blocked = blocked};
        if (!has("mode=?")) {
            known.mode = has("mode=block")   ? ProtectionMode::BlockAll
                         : has("mode=allow") ? ProtectionMode::AllowAll
                                             : ProtectionMode::Normal;
        }
        if (!has("rules=?")) known.advanced = rules;
        if (!has("app=?")) {
            known.application = has("app=deny")    ? RuleAction::Deny
                                : has("app=allow") ? RuleAction::Allow
                                                   : static_cast<RuleAction>(7);
        }
        return known;
    }
    std::vector<AdvancedRule> rules;
    std::vector<Ipv4> blocked;
    std::function<bool(const char*)> has;
};

// "rule 2 deny", "mode allow", "question ask"; with "?" for an outcome that is open and "maybe" where an earlier
// step may decide.
std::string InWords(const Decision& decision) {
    const DecisionStep& step = decision.steps[decision.decider];
    const char* const stages[] = {"blocked", "mode", "rule ", "app", "question"};
    const char* const outcomes[] = {"deny", "allow", "ask"};
    std::string text = stages[static_cast<std::size_t>(step.stage)];
    if (step.stage == DecisionStage::AdvancedRule) text += std::to_string(step.rule);
    text += ' ';
    text += decision.outcome ? outcomes[static_cast<std::size_t>(*decision.outcome)] : "?";
    return text + (decision.IsDeciderCertain() ? "" : " maybe");
}

// Traffic that most cases begin with.
constexpr const char* kWeb = "tcp out l=10.0.0.1 lp=5000 r=192.0.2.1 rp=80 p=a.exe u=me ";

struct Case {
    const char* rules;
    const char* facts;  // behind kWeb; of a kind that comes twice the last one counts
    const char* setting;
    const char* expected;
};

constexpr Case kCases[] = {
    // Which stage.
    {"", "", "", "question ask"},
    {"", "", "app=deny", "app deny"},
    {"", "", "app=?", "question ? maybe"},
    {"", "p=", "app=allow", "question ? maybe"},
    {"allow", "", "app=deny", "rule 0 allow"},
    {"allow", "p=", "", "rule 0 allow"},
    {"", "", "rules=? app=allow", "app ? maybe"},
    {"allow", "", "mode=block", "mode deny"},
    {"deny", "", "mode=allow", "mode allow"},
    {"deny", "", "mode=?", "rule 0 ? maybe"},
    {"", "", "mode=allow blocked=192.0.2.1", "blocked deny"},
    {"allow", "", "blocked=192.0.2.2", "rule 0 allow"},
    {"deny", "r=0.0.0.0", "blocked=192.0.2.1", "rule 0 deny maybe"},
    {"allow", "r=0.0.0.0", "blocked=192.0.2.1", "rule 0 ? maybe"},
    // Which rule.
    {"deny off; allow; deny", "", "", "rule 1 allow"},
    {"deny damaged; allow damaged", "", "app=deny", "app deny"},
    {"deny udp; allow u=you; allow in; deny out", "", "", "rule 3 deny"},
    {"allow u=me; deny", "u=", "", "rule 1 ? maybe"},
    {"deny u=me; deny", "u=", "", "rule 1 deny maybe"},
    {"deny u=me p=b.exe; allow", "u=", "", "rule 1 allow"},
    {"deny u=me; allow u=you", "u=", "app=allow", "app ? maybe"},
    // Protocols.
    {"deny ip", "icmp", "", "rule 0 deny"},
    {"deny ip", "47", "", "rule 0 deny"},
    {"deny ip", "arp", "", "question ask"},
    {"deny arp", "icmp", "", "question ask"},
    {"deny icmp out", "icmp in", "", "question ask"},
    // Ports.
    {"deny tcp rp=80-88", "rp=79", "", "question ask"},
    {"deny tcp rp=80-88", "rp=80", "", "rule 0 deny"},
    {"deny tcp rp=80-88", "rp=88", "", "rule 0 deny"},
    {"deny tcp rp=80-88", "rp=89", "", "question ask"},
    {"deny udp lp=5000", "udp", "", "rule 0 deny"},
    {"deny any rp=53", "icmp", "", "rule 0 deny"},
    {"deny ip rp=53", "47 rp=0", "", "rule 0 deny"},
    {"deny tcp rp=53", "rp=0", "", "question ? maybe"},
    {"deny tcp rp=0-65535", "rp=0", "", "rule 0 deny"},
    {"deny tcp rp=0-80", "rp=80", "", "rule 0 deny"},
    // Ends.
    {"deny r=192.0.2.0/24", "r=192.0.2.255", "", "rule 0 deny"},
    {"deny r=192.0.2.77/24", "", "", "rule 0 deny"},
    {"deny r=192.0.2.0/24", "r=192.0.3.0", "", "question ask"},
    {"deny r=192.0.2.2/0", "r=0.0.0.0", "", "rule 0 deny"},
    {"deny r=192.0.2.2/1", "r=0.0.0.0", "", "question ? maybe"},
    {"deny l=10.0.0.0/8 r=192.0.2.1", "", "", "rule 0 deny"},
    {"deny rh=5", "rh=5", "", "rule 0 deny"},
    {"deny rh=5", "rh=6", "", "question ask"},
    {"deny rh=5", "", "", "question ? maybe"},
    {"deny lh=5", "rh=5 lh=4", "", "question ask"},
    // Programs and users.
    {"deny p=A.EXE", "", "", "rule 0 deny"},
    {"deny u=ME", "", "", "rule 0 deny"},
    {"allow p=b.exe", "p=", "", "question ? maybe"},
    // Times: noon of the 10th of December 2026, where nothing else is said.
    {"deny h=720-720", "", "", "rule 0 deny"},
    {"deny h=721-719", "", "", "question ask"},
    {"deny h=480-1020", "t=1020", "", "rule 0 deny"},
    {"deny h=480-1020", "t=1021", "", "question ask"},
    {"deny h=1320-360", "t=1439", "", "rule 0 deny"},
    {"deny h=1320-360", "t=0", "", "rule 0 deny"},
    {"deny h=1320-360", "t=361", "", "question ask"},
    {"deny d=20261210-20261210", "", "", "rule 0 deny"},
    {"deny d=20261109-20270101", "", "", "rule 0 deny"},
    {"deny d=20261209-20261209 h=1320-360", "t=60", "", "question ask"},  // the day of the moment counts
};

TEST(DecisionTest, DecidesByTheTable) {
    for (const Case& row : kCases) {
        const Setting setting(row.setting, row.rules);
        const TrafficFacts facts = test::FactsIn(std::string(kWeb) + row.facts);
        EXPECT_EQ(InWords(Decide(setting.Known(), facts, *facts.when)), row.expected)
            << row.rules << " | " << row.facts << " | " << row.setting;
    }
}

TEST(DecisionTest, TellsWhatWouldDecideAndWhatIsMissing) {
    std::vector<AdvancedRule> rules = {test::RuleIn("deny tcp rp=80 u=me r=192.0.2.1"), test::RuleIn("deny udp"),
                                       test::RuleIn("allow"), test::RuleIn("deny")};
    const TrafficFacts facts = test::FactsIn("out rp=80");
    KnownRules known{.mode = ProtectionMode::Normal, .advanced = rules, .application = RuleAction::Deny};
    using Stage = DecisionStage;
    using Answer = RuleAnswer;
    // What is missing, the outcome, the rule's place, and whether the step is reached.
    constexpr RuleFacts kOfTheFirst = kFactProtocol | kFactUser | kFactRemoteAddress;
    const std::vector<DecisionStep> expected = {
        {Stage::BlockedAddress, Answer::No, 0, {}, 0, true},
        {Stage::Mode, Answer::No, 0, {}, 0, true},
        {Stage::AdvancedRule, Answer::Unknown, kOfTheFirst, Outcome::Deny, 0, true},
        {Stage::AdvancedRule, Answer::Unknown, kFactProtocol, Outcome::Deny, 1, true},
        {Stage::AdvancedRule, Answer::Yes, 0, Outcome::Allow, 2, true},
        {Stage::AdvancedRule, Answer::Yes, 0, Outcome::Deny, 3, false},
        {Stage::ApplicationRule, Answer::Unknown, kFactProgram, {}, 0, false},
        {Stage::Question, Answer::Yes, 0, Outcome::Ask, 0, false}};
    EXPECT_EQ(Decide(known, facts, *facts.when).steps, expected);

    // However many there are, the one that decides is among them.
    rules.assign(2 * kMostRulesBehind, test::RuleIn("deny u=me"));
    rules.resize(5 * kMostRulesBehind, test::RuleIn("allow"));
    rules.push_back(test::RuleIn("off"));
    known.advanced = rules;
    const Decision decision = Decide(known, facts, *facts.when);
    EXPECT_EQ(InWords(decision), "rule " + std::to_string(2 * kMostRulesBehind) + " ? maybe");
    EXPECT_EQ(decision.leftOut, 2 * kMostRulesBehind - 1);
    EXPECT_EQ(decision.mayLeftOut, 2 * kMostRulesBehind - kMostRulesInFront);
    EXPECT_EQ(decision.steps.size(), 2 + kMostRulesInFront + 1 + kMostRulesBehind + 2);
    EXPECT_EQ(decision.notMatching, 1U);

    // One that is far below all others may still change the outcome; behind the decider too those that may are told
    // apart.
    rules.assign(2 * kMostRulesInFront, test::RuleIn("allow u=me"));
    rules.push_back(test::RuleIn("deny u=me"));
    rules.push_back(test::RuleIn("allow"));
    rules.resize(rules.size() + kMostRulesBehind + 3, test::RuleIn("deny u=me"));
    known.advanced = rules;
    const Decision open = Decide(known, facts, *facts.when);
    EXPECT_EQ(InWords(open), "rule " + std::to_string(2 * kMostRulesInFront + 1) + " ? maybe");
    EXPECT_EQ(open.leftOut, 0U);
    EXPECT_EQ(open.mayLeftOut, kMostRulesInFront + 3);
}

}  // namespace
}  // namespace brennvar
