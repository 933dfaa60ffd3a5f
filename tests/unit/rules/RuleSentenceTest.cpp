#include "rules/RuleSentence.h"

#include <gtest/gtest.h>

#include "support/FakeIni.h"

namespace brennvar {
namespace {

using Kind = RuleEnd::Kind;

Ipv4 Address(const char* text) {
    return *ParseIpv4(text);
}

AdvancedRule Rule(RuleProtocol protocol, RuleRoute route, RuleEnd remote = {}, RuleEnd local = {}) {
    AdvancedRule rule;
    rule.protocol = protocol;
    rule.route = route;
    rule.remote = remote;
    rule.local = local;
    return rule;
}

// All that a rule can say.
AdvancedRule FullRule() {
    AdvancedRule rule = Rule(
        RuleProtocol::Tcp, RuleRoute::Outgoing,
        {.kind = Kind::Ipv4, .address = Address("192.0.2.0"), .mask = MaskOf(24), .firstPort = 80, .lastPort = 88},
        {.kind = Kind::Ipv4, .address = Address("10.0.0.1"), .firstPort = 0, .lastPort = 9});
    rule.program = R"(C:\Browser\browser.exe)";
    rule.user = "OFFICE\\anna\n";
    rule.hours = RuleHours{.first = 8 * 60, .last = 17 * 60 + 5};
    rule.dates = RuleDates{.first = {2026, 12, 1}, .last = {2026, 12, 24}};
    rule.isLogged = true;
    return rule;
}

TEST(RuleSentenceTest, SaysAllThatARuleSays) {
    const Language english(nullptr);
    const auto says = [&](const AdvancedRule& rule) { return RuleSentence(english, rule); };
    AdvancedRule rule = FullRule();
    const std::string full =
        "Deny outgoing TCP to 192.0.2.0/24, port 80-88, local address 10.0.0.1, local port 0-9, for browser.exe, "
        "user OFFICE\\anna , from 8:00 to 17:05, from 2026-12-01 until 2026-12-24, logged";
    EXPECT_EQ(says(rule), full);
    rule.isEnabled = false;
    EXPECT_EQ(says(rule), "Switched off: " + full);
    rule.isDamaged = true;
    EXPECT_EQ(says(rule), "Damaged, never matches: " + full);

    EXPECT_EQ(says({}), "Deny all traffic");
    const RuleEnd hardware{.kind = Kind::Hardware, .hardware = {2, 0, 0, 0xAB, 0xCD, 0xEF}};
    rule = Rule(RuleProtocol::Arp, RuleRoute::Incoming, hardware, {.firstPort = 7, .lastPort = 7});
    rule.action = AdvancedAction::Allow;
    EXPECT_EQ(says(rule), "Allow incoming ARP from 02:00:00:AB:CD:EF") << "ARP has no ports";
    rule = Rule(RuleProtocol::Any, RuleRoute::Both, {.firstPort = 53, .lastPort = 53});
    rule.dates = RuleDates{.first = {2026, 2, 3}, .last = {2026, 2, 3}};
    EXPECT_EQ(says(rule), "Deny all traffic, of TCP and UDP only remote port 53, on 2026-02-03");
    rule.protocol = RuleProtocol::Ip;
    rule.local = {.kind = Kind::Ipv4, .address = 1, .firstPort = 9, .lastPort = 9};
    rule.dates.reset();
    EXPECT_EQ(says(rule), "Deny IP, local address 1.0.0.0, of TCP and UDP only remote port 53, local port 9");
    EXPECT_EQ(says(Rule(RuleProtocol::Ip, RuleRoute::Both, {.kind = Kind::Ipv4, .address = 1})),
              "Deny IP to or from 1.0.0.0");
}

TEST(RuleSentenceTest, LeavesTheOrderOfWordsToTheLanguage) {
    const Language other(std::make_unique<test::FakeIni>(test::FakeIni::Values{
        {"Language/DL_N_201_1902", "%1 going out: no"}, {"Language/DL_N_201_1927", "until %2 (%1)"}}));
    AdvancedRule rule = Rule(RuleProtocol::Udp, RuleRoute::Outgoing);
    rule.hours = RuleHours{.first = 1, .last = 2};
    EXPECT_EQ(RuleSentence(other, rule), "UDP going out: no, until 0:02 (0:01)");
    EXPECT_EQ(FillText("100% of %2, %3, %", {"a", "%2"}), "100% of %2, %3, %") << "no place for the first";
}

}  // namespace
}  // namespace brennvar
