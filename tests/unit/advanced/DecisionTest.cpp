// The decision against a second one, which is made in another way: it knows nothing of unknown facts, but tries
// every value that could stand in their place.
#include "advanced/Decision.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "support/RuleWords.h"

namespace brennvar {
namespace {

bool IsPrefixEqual(Ipv4 a, Ipv4 b, Ipv4 mask) {
    for (unsigned bit = 0; bit < 32; ++bit) {
        const bool counts = ((mask >> bit) & 1) != 0;
        if (counts && ((a >> bit) & 1) != ((b >> bit) & 1)) return false;
    }
    return true;
}

bool IsEndRight(const RuleEnd& end, Ipv4 address, const std::optional<HardwareAddress>& hardware) {
    if (end.kind == RuleEnd::Kind::Hardware) return end.hardware == hardware;
    return end.kind == RuleEnd::Kind::Any || IsPrefixEqual(end.address, address, end.mask);
}

bool IsPortRight(const RuleEnd& end, std::uint32_t protocol, std::uint32_t port) {
    if (protocol != 6 && protocol != 17) return true;
    if (end.firstPort == 0 && end.lastPort == 0) return true;
    for (std::uint32_t each = end.firstPort; each <= end.lastPort; ++each) {
        if (each == port) return true;
    }
    return false;
}

// Goes from minute to minute, as a clock does.
bool IsTimeRight(const AdvancedRule& rule, const LocalMoment& moment) {
    if (rule.hours) {
        int minute = rule.hours->first;
        while (minute != moment.minute && minute != rule.hours->last) minute = (minute + 1) % 1440;
        if (minute != moment.minute) return false;
    }
    const auto text = [](const LocalDate& day) {
        return std::to_string((day.year * 100 + day.month) * 100 + day.day);
    };
    return !rule.dates ||
           (text(rule.dates->first) <= text(moment.day) && text(moment.day) <= text(rule.dates->last));
}

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

bool IsRight(const AdvancedRule& rule, const TrafficFacts& facts) {
    const auto asked = static_cast<std::uint32_t>(rule.protocol);
    const std::uint32_t protocol = *facts.protocol;
    const auto isText = [](const std::string& text, const std::string& known) {
        return text.empty() || Upper(text) == Upper(known);
    };
    return (asked == 0xFFFFFFFF || (asked == 0 ? protocol != 806 : asked == protocol)) &&
           (rule.route == RuleRoute::Both ||
            static_cast<std::uint32_t>(rule.route) == static_cast<std::uint32_t>(facts.direction)) &&
           IsPortRight(rule.remote, protocol, facts.remotePort) &&
           IsPortRight(rule.local, protocol, facts.localPort) &&
           IsEndRight(rule.remote, facts.remoteAddress, facts.remoteHardware) &&
           IsEndRight(rule.local, facts.localAddress, facts.localHardware) && isText(rule.program, facts.program) &&
           isText(rule.user, facts.user);
}

// All facts that could be meant: what is missing takes each of the values that make a difference to the rule.
class Worlds {
public:
    explicit Worlds(const TrafficFacts& facts) : m_worlds{facts} {}
    template <class Value>
    void Fill(Value TrafficFacts::*fact, const std::vector<Value>& values) {
        if (m_worlds.front().*fact != Value()) return;
        std::vector<TrafficFacts> more;
        for (const TrafficFacts& world : m_worlds) {
            for (const Value& value : values) {
                more.push_back(world);
                more.back().*fact = value;
            }
        }
        m_worlds = std::move(more);
    }
    [[nodiscard]] const std::vector<TrafficFacts>& All() const { return m_worlds; }

private:
    std::vector<TrafficFacts> m_worlds;
};

std::vector<std::uint16_t> PortsAround(const RuleEnd& end) {
    std::vector<std::uint16_t> ports = {1, 65535};
    for (const int edge : {end.firstPort - 1, +end.firstPort, +end.lastPort, end.lastPort + 1}) {
        if (edge > 0 && edge < 65536) ports.push_back(static_cast<std::uint16_t>(edge));
    }
    return ports;
}

RuleAnswer NaiveAnswer(const AdvancedRule& rule, const TrafficFacts& facts) {
    if (!rule.isEnabled || rule.isDamaged || !IsTimeRight(rule, *facts.when)) return RuleAnswer::No;
    using Hardware = std::optional<HardwareAddress>;
    Worlds worlds(facts);
    worlds.Fill(&TrafficFacts::protocol, {1, 6, 17, 47, 806});
    worlds.Fill(&TrafficFacts::direction, {TrafficDirection::Incoming, TrafficDirection::Outgoing});
    worlds.Fill(&TrafficFacts::remotePort, PortsAround(rule.remote));
    worlds.Fill(&TrafficFacts::localPort, PortsAround(rule.local));
    worlds.Fill(&TrafficFacts::remoteAddress, {rule.remote.address, ~rule.remote.address});
    worlds.Fill(&TrafficFacts::localAddress, {rule.local.address, ~rule.local.address});
    worlds.Fill(&TrafficFacts::remoteHardware, {Hardware(rule.remote.hardware), Hardware({9})});
    worlds.Fill(&TrafficFacts::localHardware, {Hardware(rule.local.hardware), Hardware({9})});
    worlds.Fill<std::string>(&TrafficFacts::program, {rule.program, "?"});
    worlds.Fill<std::string>(&TrafficFacts::user, {rule.user, "?"});
    std::size_t right = 0;
    for (const TrafficFacts& world : worlds.All()) right += IsRight(rule, world) ? 1 : 0;
    return right == 0 ? RuleAnswer::No : right == worlds.All().size() ? RuleAnswer::Yes : RuleAnswer::Unknown;
}

// What is known, in words: "mode=block app=allow blocked=1.2.3.4"; "?" for what could not be read.
struct Setting {
    explicit Setting(const std::string& words, const std::string& lines) {
        std::istringstream stream(lines);
        for (std::string line; std::getline(stream, line, ';');) rules.push_back(test::RuleIn(line));
        const auto has = [&](const char* word) { return words.find(word) != words.npos; };
        mode = has("mode=block") ? "deny" : has("mode=allow") ? "allow" : has("mode=?") ? "?" : "";
        app = has("app=deny") ? "deny" : has("app=allow") ? "allow" : has("app=?") ? "?" : "";
        areRulesKnown = !has("rules=?");
        if (has("blocked=192.0.2.1")) blocked.push_back(ParseIpv4("192.0.2.1").value());
        if (has("blocked=192.0.2.2")) blocked.push_back(ParseIpv4("192.0.2.2").value());
    }
    [[nodiscard]] KnownRules Known() const {
        KnownRules known{.blocked = blocked};
        if (mode != "?") {
            known.mode = mode == "deny"    ? ProtectionMode::BlockAll
                         : mode == "allow" ? ProtectionMode::AllowAll
                                           : ProtectionMode::Normal;
        }
        if (areRulesKnown) known.advanced = rules;
        if (app != "?") {
            known.application = app == "deny"    ? RuleAction::Deny
                                : app == "allow" ? RuleAction::Allow
                                                 : static_cast<RuleAction>(7);
        }
        return known;
    }
    std::vector<AdvancedRule> rules;
    std::vector<Ipv4> blocked;
    std::string mode;
    std::string app;
    bool areRulesKnown = true;
};

// "rule 2 deny", "mode allow", "question ask"; with "?" for an outcome that is open and "maybe" where an earlier
// step may decide.
std::string NaiveDecision(const Setting& setting, const TrafficFacts& facts) {
    std::vector<std::string> open;  // outcomes of the steps that may decide
    std::string decider;
    const auto ask = [&](const std::string& name, RuleAnswer answer, const std::string& outcome) {
        if (!decider.empty() || answer == RuleAnswer::No) return;
        if (answer == RuleAnswer::Unknown) {
            open.push_back(outcome);
            return;
        }
        bool isOpen = outcome == "?";
        for (const std::string& other : open) isOpen = isOpen || other != outcome;
        decider = name + ' ' + (isOpen ? "?" : outcome) + (open.empty() ? "" : " maybe");
    };
    const auto answerOf = [](const std::string& word) {
        return word.empty() ? RuleAnswer::No : word == "?" ? RuleAnswer::Unknown : RuleAnswer::Yes;
    };
    for (const Ipv4 address : setting.blocked) {
        ask("blocked",
            facts.remoteAddress == 0         ? RuleAnswer::Unknown
            : facts.remoteAddress == address ? RuleAnswer::Yes
                                             : RuleAnswer::No,
            "deny");
    }
    ask("mode", answerOf(setting.mode), setting.mode);
    if (!setting.areRulesKnown) ask("rule", RuleAnswer::Unknown, "?");
    for (std::size_t i = 0; setting.areRulesKnown && i < setting.rules.size(); ++i) {
        const AdvancedRule& rule = setting.rules[i];
        ask("rule " + std::to_string(i), NaiveAnswer(rule, facts),
            rule.action == AdvancedAction::Allow ? "allow" : "deny");
    }
    ask("app", facts.program.empty() ? RuleAnswer::Unknown : answerOf(setting.app),
        facts.program.empty() ? "?" : setting.app);
    ask("question", RuleAnswer::Yes, "ask");
    return decider;
}

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

std::string Decided(const Setting& setting, const TrafficFacts& facts) {
    return InWords(Decide(setting.Known(), facts, *facts.when));
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
    {"", "", "app=allow", "app allow"},
    {"", "", "app=deny", "app deny"},
    {"", "", "app=?", "question ? maybe"},
    {"", "p=", "app=allow", "question ? maybe"},
    {"allow", "", "app=deny", "rule 0 allow"},
    {"deny", "", "app=allow", "rule 0 deny"},
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
    {"deny any", "arp", "", "rule 0 deny"},
    {"deny arp", "arp", "", "rule 0 deny"},
    {"deny arp", "icmp", "", "question ask"},
    {"deny tcp", "udp", "", "question ask"},
    {"deny udp", "udp", "", "rule 0 deny"},
    {"deny icmp", "icmp in", "", "rule 0 deny"},
    {"deny icmp out", "icmp in", "", "question ask"},
    {"deny in", "in", "", "rule 0 deny"},
    // Ports.
    {"deny tcp rp=80-88", "rp=79", "", "question ask"},
    {"deny tcp rp=80-88", "rp=80", "", "rule 0 deny"},
    {"deny tcp rp=80-88", "rp=88", "", "rule 0 deny"},
    {"deny tcp rp=80-88", "rp=89", "", "question ask"},
    {"deny tcp lp=80", "", "", "question ask"},
    {"deny udp lp=5000", "udp", "", "rule 0 deny"},
    {"deny any rp=53", "icmp", "", "rule 0 deny"},
    {"deny any rp=53", "", "", "question ask"},
    {"deny ip rp=53", "47 rp=0", "", "rule 0 deny"},
    {"deny tcp rp=53", "rp=0", "", "question ? maybe"},
    {"deny tcp rp=0-65535", "rp=0", "", "rule 0 deny"},
    {"deny tcp rp=0-80", "rp=80", "", "rule 0 deny"},
    {"deny tcp rp=65535", "rp=65535", "", "rule 0 deny"},
    // Ends.
    {"deny r=192.0.2.0/24", "r=192.0.2.255", "", "rule 0 deny"},
    {"deny r=192.0.2.77/24", "", "", "rule 0 deny"},
    {"deny r=192.0.2.0/24", "r=192.0.3.0", "", "question ask"},
    {"deny r=192.0.2.0/31", "", "", "rule 0 deny"},
    {"deny r=192.0.2.2", "", "", "question ask"},
    {"deny r=192.0.2.2/0", "r=0.0.0.0", "", "rule 0 deny"},
    {"deny r=192.0.2.2/1", "r=0.0.0.0", "", "question ? maybe"},
    {"deny l=10.0.0.0/8 r=192.0.2.1", "", "", "rule 0 deny"},
    {"deny l=192.0.2.1", "", "", "question ask"},
    {"deny rh=5", "rh=5", "", "rule 0 deny"},
    {"deny rh=5", "rh=6", "", "question ask"},
    {"deny rh=5", "", "", "question ? maybe"},
    {"deny lh=5", "rh=5 lh=4", "", "question ask"},
    // Programs and users.
    {"deny p=A.EXE", "", "", "rule 0 deny"},
    {"deny p=a.ex", "", "", "question ask"},
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
    {"deny d=20261211-20261231", "", "", "question ask"},
    {"deny d=20251201-20261209", "", "", "question ask"},
    {"deny d=20261109-20270101", "", "", "rule 0 deny"},
    {"deny d=20261209-20261209 h=1320-360", "t=60", "", "question ask"},  // the day of the moment counts
};
static_assert(std::size(kCases) >= 60);

TEST(DecisionTest, DecidesByTheTableAsTheNaiveOneDoes) {
    for (const Case& row : kCases) {
        const Setting setting(row.setting, row.rules);
        TrafficFacts facts = test::FactsIn(std::string(kWeb) + row.facts);
        const std::string what = std::string(row.rules) + " | " + row.facts + " | " + row.setting;
        EXPECT_EQ(Decided(setting, facts), row.expected) << what;
        EXPECT_EQ(NaiveDecision(setting, facts), row.expected) << what;
    }
}

TEST(DecisionTest, DecidesAtRandomAsTheNaiveOneDoes) {
    using Choices = std::vector<std::vector<const char*>>;
    const Choices ruleParts = {{"deny", "allow"},
                               {"any", "any", "ip", "tcp", "udp", "icmp", "arp"},
                               {"", "in", "out"},
                               {"", "", "r=192.0.2.0/24", "r=192.0.2.1", "r=0.0.0.1/0", "rh=5"},
                               {"", "", "l=10.0.0.0/8", "lh=5"},
                               {"", "", "rp=80", "rp=80-88"},
                               {"", "", "", "lp=5"},
                               {"", "", "h=480-1020", "h=1320-360", "d=20261210-20261211"},
                               {"", "", "p=a"},
                               {"", "", "", "u=me"},
                               {"", "", "", "", "", "off", "damaged"}};
    const Choices factParts = {{"", "tcp", "tcp", "udp", "icmp", "arp", "47"},
                               {"", "in", "out", "out"},
                               {"", "r=192.0.2.1", "r=192.0.2.1", "r=192.0.9.1"},
                               {"", "l=10.0.0.1", "l=11.0.0.1", "lh=5"},
                               {"", "rp=80", "rp=88", "rp=89"},
                               {"", "lp=5", "lp=6", "rh=5"},
                               {"", "p=a", "p=A", "p=b"},
                               {"", "u=me", "u=you"},
                               {"", "t=479", "t=1020", "t=1320", "t=0"}};
    const Choices settingParts = {{"", "", "", "mode=allow", "mode=block", "mode=?"},
                                  {"", "", "app=allow", "app=deny", "app=?"},
                                  {"", "", "", "rules=?", "blocked=192.0.2.1"}};
    std::mt19937 random(20);  // the same ones every time
    const auto pick = [&random](const Choices& parts) {
        std::string words;
        for (const auto& part : parts) words += std::string(part[random() % part.size()]) + ' ';
        return words;
    };
    for (int i = 0; i < 600; ++i) {
        std::string rules;
        for (auto count = random() % 6; count > 0; --count) rules += pick(ruleParts) + ';';
        const std::string words = pick(factParts);
        const std::string known = pick(settingParts);
        const Setting setting(known, rules);
        const TrafficFacts facts = test::FactsIn(words);
        ASSERT_EQ(Decided(setting, facts), NaiveDecision(setting, facts))
            << rules << " | " << words << " | " << known;
    }
}

TEST(DecisionTest, TellsWhatWouldDecideAndWhatIsMissing) {
    std::vector<AdvancedRule> rules = {test::RuleIn("deny tcp rp=80 u=me r=192.0.2.1"), test::RuleIn("deny udp"),
                                       test::RuleIn("allow"), test::RuleIn("deny")};
    const TrafficFacts facts = test::FactsIn("out rp=80");
    KnownRules known{.mode = ProtectionMode::Normal, .advanced = rules, .application = RuleAction::Deny};
    using Stage = DecisionStage;
    using Answer = RuleAnswer;
    const std::vector<DecisionStep> expected = {
        {.stage = Stage::BlockedAddress, .isReached = true},
        {.stage = Stage::Mode, .isReached = true},
        {.stage = Stage::AdvancedRule,
         .answer = Answer::Unknown,
         .missing = kFactProtocol | kFactUser | kFactRemoteAddress,
         .outcome = Outcome::Deny,
         .isReached = true},
        {.stage = Stage::AdvancedRule,
         .answer = Answer::Unknown,
         .missing = kFactProtocol,
         .outcome = Outcome::Deny,
         .rule = 1,
         .isReached = true},
        {.stage = Stage::AdvancedRule,
         .answer = Answer::Yes,
         .outcome = Outcome::Allow,
         .rule = 2,
         .isReached = true},
        {.stage = Stage::AdvancedRule, .answer = Answer::Yes, .outcome = Outcome::Deny, .rule = 3},
        {.stage = Stage::ApplicationRule, .answer = Answer::Unknown, .missing = kFactProgram},
        {.stage = Stage::Question, .answer = Answer::Yes, .outcome = Outcome::Ask}};
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
