#include "rules/AdvancedRule.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "rules/AdvancedRuleFile.h"
#include "support/FakeClock.h"
#include "support/GoldenCipher.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;

// A record with each field another one than it is in a new rule, byte by byte.
std::string GoldenRecord() {
    std::string bytes = test::TextFromHex(
        "04030201 01000000 00000000 06000000 02000000"
        "01000000 0a000000 ff000000 00000000 000000000000 0000"
        "01000000 c0000200 ffffff00 5000 5800 000000000000 0000"
        "03000000 b004 6801 51293501 68293501 01000000");
    bytes += R"(C:\Browser\browser.exe)";
    bytes.resize(348, '\0');
    bytes += R"(OFFICE\anna)";
    bytes.resize(452, '\0');
    bytes += "Office only";
    bytes.resize(712, '\0');
    return bytes;
}

AdvancedRule GoldenRule() {
    AdvancedRule rule;
    rule.id = 0x01020304;
    rule.action = AdvancedAction::Allow;
    rule.isEnabled = false;
    rule.protocol = RuleProtocol::Tcp;
    rule.route = RuleRoute::Outgoing;
    rule.local = {.kind = RuleEnd::Kind::Ipv4, .address = 0x0000000A, .mask = 0x000000FF};
    rule.remote = {
        .kind = RuleEnd::Kind::Ipv4, .address = 0x000200C0, .mask = 0x00FFFFFF, .firstPort = 80, .lastPort = 88};
    rule.hours = RuleHours{.first = 20 * 60, .last = 6 * 60};
    rule.dates = RuleDates{.first = {2026, 12, 1}, .last = {2026, 12, 24}};
    rule.isLogged = true;
    rule.program = R"(C:\Browser\browser.exe)";
    rule.user = R"(OFFICE\anna)";
    rule.description = "Office only";
    return rule;
}

AdvancedRule Decode(const std::string& bytes) {
    return DecodeRule(*DecodeRecord<AdvancedRuleRecord>(std::as_bytes(std::span(bytes))));
}

struct Patch {
    std::size_t offset;
    std::string_view bytes;
};
std::string Patched(const std::vector<Patch>& patches) {
    std::string bytes = GoldenRecord();
    for (const auto& [offset, piece] : patches) bytes.replace(offset, piece.size(), piece);
    return bytes;
}

TEST(AdvancedRuleTest, ReadsAndWritesEachByteWhereItStands) {
    EXPECT_EQ(Decode(GoldenRecord()), GoldenRule());
    EXPECT_EQ(test::BytesOf(EncodeRule(GoldenRule())), GoldenRecord());
    // Hardware addresses at both ends, and nothing else that is not the default.
    AdvancedRule rule;
    rule.local.kind = rule.remote.kind = RuleEnd::Kind::Hardware;
    rule.remote.hardware = {2, 0, 0, 0xAB, 0xCD, 0xEF};
    std::string bytes(712, '\0');
    bytes.replace(8, 1, "\1");
    bytes.replace(12, 4, "\xFF\xFF\xFF\xFF");
    bytes.replace(20, 1, "\2");
    bytes.replace(44, 1, "\2");
    bytes.replace(60, 6, "\2\0\0\xAB\xCD\xEF"sv);
    EXPECT_EQ(test::BytesOf(EncodeRule(rule)), bytes);
    EXPECT_EQ(Decode(bytes), rule);
    // Texts are cut to leave room for their zero, and end with their field.
    rule.program = rule.user = rule.description = std::string(300, 'x');
    const AdvancedRule cut = DecodeRule(EncodeRule(rule));
    EXPECT_EQ(cut.program.size(), 259U);
    EXPECT_EQ(cut.user.size(), 103U);
    EXPECT_EQ(cut.description.size(), 255U);
    EXPECT_EQ(Decode(Patched({{452, std::string(256, 'x')}})).description, std::string(255, 'x'));
}

TEST(AdvancedRuleTest, TellsDamagedRecordsFromOddOnes) {
    const std::vector<std::vector<Patch>> damaged = {{{4, "\2"}},  // action
                                                     {{8, "\2"}},  // enabled
                                                     {{12, "\2"}},
                                                     {{15, "\1"}},  // protocol
                                                     {{16, "\3"}},  // route
                                                     {{20, "\3"}},
                                                     {{44, "\3"}},  // kind of end
                                                     {{20, "\2"}},
                                                     {{44, "\2"}},            // one by hardware, one by address
                                                     {{28, "\xFF\0\xFF"sv}},  // mask
                                                     {{52, "\x7F"}},
                                                     {{56, "\x59"}},  // ports the wrong way round
                                                     {{32, "\2\0\1"sv}},
                                                     {{68, "\7"}},  // restrictions
                                                     {{72, "\xA0\5"}},
                                                     {{74, "\xA0\5"}},  // minute 1440
                                                     {{76, "\x69"}},    // the last day before the first
                                                     {{76, "\x44"}},
                                                     {{80, "\x70"}},  // 2026-11-88, 2026-12-32
                                                     {{76, "\0\0\0\0"sv}},
                                                     {{80, "\xFF\xFF\xFF\xFF"}},
                                                     {{84, "\2"}}};  // logged
    for (std::size_t i = 0; i < damaged.size(); ++i) {
        const AdvancedRule rule = Decode(Patched(damaged[i]));
        EXPECT_TRUE(rule.isDamaged) << i;
        EXPECT_EQ(rule.description, "Office only") << i;
    }
    const std::vector<std::vector<Patch>> whole = {
        {{0, "\0\0\0\0"sv}},                                       // no identifier
        {{20, "\0"sv}, {44, "\2"}},                                // hardware and any
        {{28, "\0\0\0\0"sv}},                                      // prefix 0
        {{56, "\0\0"sv}},                                          // from port 0
        {{44, "\0"sv}, {52, "\1\2\3\4"}},                          // a mask that does not count
        {{68, "\0"sv}, {72, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"}},  // nor do hours and dates
        {{72, "\x9F\5\x9F\5"}},                                    // 23:59
        {{708, "\1"}, {42, "\1"}}};                                // nor what is zero today
    for (std::size_t i = 0; i < whole.size(); ++i) EXPECT_FALSE(Decode(Patched(whole[i])).isDamaged) << i;
    // They are kept for when they are in force again.
    const std::string idle = Patched({{68, "\0"sv}, {72, "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\1\2\3\4"}});
    EXPECT_EQ(test::BytesOf(EncodeRule(Decode(idle))), idle);
    // The leap day, of a year that has one.
    EXPECT_FALSE(Decode(Patched({{76, "\x65\xD7\x34\x01"}})).isDamaged);  // 2024-02-29
    EXPECT_TRUE(Decode(Patched({{76, "\x75\xFE\x34\x01"}})).isDamaged);   // 2025-02-29
}

TEST(AdvancedRuleTest, KnowsMasksThatArePrefixes) {
    for (int prefix = 0; prefix <= 32; ++prefix) EXPECT_EQ(PrefixOf(MaskOf(prefix)), prefix);
    EXPECT_EQ(MaskOf(20), ParseIpv4("255.255.240.0"));
    for (const char* mask : {"0.0.0.255", "255.0.255.0", "127.255.255.255", "255.255.255.253"}) {
        EXPECT_EQ(PrefixOf(*ParseIpv4(mask)), std::nullopt) << mask;
    }
}

TEST(AdvancedRuleTest, MakesARuleOfWhatWasSeen) {
    const TrafficFacts seen{.program = "C:\\a.exe",
                            .user = "me",
                            .protocol = 17,
                            .direction = TrafficDirection::Incoming,
                            .localAddress = 1,
                            .remoteAddress = 2,
                            .localPort = 3,
                            .remotePort = 4,
                            .remoteHardware = HardwareAddress{5}};
    AdvancedRule rule;
    rule.program = "C:\\a.exe";
    rule.protocol = RuleProtocol::Udp;
    rule.route = RuleRoute::Incoming;
    rule.remote = {.kind = RuleEnd::Kind::Ipv4, .address = 2};
    rule.local.firstPort = rule.local.lastPort = 3;
    EXPECT_EQ(RuleFor(seen), rule);
    TrafficFacts other = seen;
    other.direction = TrafficDirection::Outgoing;
    rule.route = RuleRoute::Outgoing;
    rule.local = {};
    rule.remote.firstPort = rule.remote.lastPort = 4;
    EXPECT_EQ(RuleFor(other), rule);
    other.protocol = 47;  // over IP, without ports
    other.remoteAddress = 0;
    rule.protocol = RuleProtocol::Ip;
    rule.remote = {.kind = RuleEnd::Kind::Hardware, .hardware = {5}};
    EXPECT_EQ(RuleFor(other), rule);
    EXPECT_EQ(RuleFor({}), AdvancedRule());
}

TEST(AdvancedRuleFileTest, KeepsTheOrderOfTheFileAndTellsMissingFromUnreadable) {
    test::FakeClock clock;
    const test::TempFolder folder;
    const std::string other = Patched({{0, "\x09"}});
    const std::string file =
        folder.Write("rules", test::EncipherByHand(GoldenRecord() + other + GoldenRecord().substr(1), 712));
    AdvancedRule ninth = GoldenRule();
    ninth.id = 0x01020309;
    EXPECT_EQ(LoadAdvancedRules(file, clock), (std::vector<AdvancedRule>{GoldenRule(), ninth}));
    EXPECT_EQ(LoadAdvancedRules(folder.File("missing"), clock), std::vector<AdvancedRule>());
    EXPECT_FALSE(std::filesystem::exists(folder.File("missing"))) << "the file is the service's";
    EXPECT_EQ(LoadAdvancedRules(folder.Path(), clock), std::nullopt);
}

}  // namespace
}  // namespace brennvar
