// "Why?" from the texts of its fields to the texts of its answer.
#include <gtest/gtest.h>

#include "advanced/DecisionFiles.h"
#include "advanced/WhyFields.h"
#include "advanced/WhyReport.h"
#include "commands/BlockedAddresses.h"
#include "config/ResourceIds.h"
#include "support/FakeClock.h"
#include "support/FakeOptions.h"
#include "support/GoldenCipher.h"
#include "support/RuleWords.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

constexpr LocalMoment kNow{.day = {2026, 12, 10}, .minute = 720};

TEST(WhyFieldsTest, ReadBackWhatTheyShow) {
    const WhyTexts full = {R"(C:\a.exe)", "17",           "1",          "192.0.2.1", "53", "02:00:00:0A:CD:EF",
                           "65535",       "OFFICE\\anna", "2026-02-28", "8:05"};
    const WhyQuestion question = ParseWhyTexts(full, kNow);
    EXPECT_EQ(question.wrong, std::nullopt);
    EXPECT_EQ(question.moment, (LocalMoment{.day = {2026, 2, 28}, .minute = 485}));
    EXPECT_EQ(question.facts.localHardware, (HardwareAddress{2, 0, 0, 10, 0xCD, 0xEF}));
    EXPECT_EQ(question.facts.localAddress, 0U);
    EXPECT_EQ(WhyTextsOf(question.facts), full);

    const WhyQuestion empty = ParseWhyTexts({}, kNow);
    EXPECT_EQ(empty.moment, kNow);
    EXPECT_EQ(empty.facts.protocol, std::nullopt);
    EXPECT_EQ(empty.facts.direction, TrafficDirection::Unknown);
}

TEST(WhyFieldsTest, NamesTheFieldThatMeansNothing) {
    const std::pair<WhyField, const char*> wrong[] = {{WhyField::RemoteAddress, "host"},
                                                      {WhyField::RemoteAddress, "02:00:00:AB:CD:EF:01"},
                                                      {WhyField::RemoteAddress, "192.0.2.0/24"},
                                                      {WhyField::RemoteAddress, "192.0.2.0-192.0.2.255"},
                                                      {WhyField::LocalPort, "65536"},
                                                      {WhyField::LocalPort, "80 90"},
                                                      {WhyField::Day, "2026-02-29"},
                                                      {WhyField::Time, "24:00"}};
    for (const auto& [field, text] : wrong) {
        WhyTexts fields;
        TextOf(fields, field) = text;
        EXPECT_EQ(ParseWhyTexts(fields, kNow).wrong, field) << text;
    }
}

// Everything that is told, a line for each stage: "stage | says | verdict | page row", behind the answer.
std::string Told(const KnownRules& known, const std::string& facts) {
    const TrafficFacts asked = test::FactsIn(facts);
    const WhyReport report = ReportDecision(Language(nullptr), Decide(known, asked, *asked.when), known, asked);
    std::string text = report.answer + '\n';
    for (std::size_t i = 0; i < report.lines.size(); ++i) {
        const WhyLine& line = report.lines[i];
        text += (line.isDecider && report.decider == i ? "* " : "  ") + line.stage + " | " + line.says + " | " +
                line.verdict + " | " + std::to_string(static_cast<int>(line.tone));
        if (line.link) text += " | " + std::to_string(line.link->page) + ' ' + line.link->row;
        text += '\n';
    }
    return text;
}

TEST(WhyReportTest, TellsTheStagesInTheirOrder) {
    std::vector<AdvancedRule> rules = {test::RuleIn("deny udp"), test::RuleIn("deny tcp u=me"),
                                       test::RuleIn("allow tcp out"), test::RuleIn("deny")};
    rules[2].id = 7;
    rules[2].description = "Mail\tout";
    const std::vector<Ipv4> blocked = {1};
    const KnownRules known{
        .blocked = blocked, .mode = ProtectionMode::Normal, .advanced = rules, .application = RuleAction::Deny};
    // Tones: 0 plain, 1 muted, 2 allow, 3 deny, 4 ask. Pages: 429 Advanced, 439 Applications.
    EXPECT_EQ(Told(known, R"(tcp out r=192.0.2.1 p=C:\a.exe u=you)"),
              "Allowed by the advanced rule 'Mail out'.\n"
              "  Blocked address | 192.0.2.1 | does not apply | 1\n"
              "  Protection mode | Normal | does not apply | 1\n"
              "* Advanced rule 3 | Mail out: Allow outgoing TCP | decides | 2 | 429 7\n"
              "  Advanced rule 4 | Deny all traffic | would decide | 1 | 429 0#2\n"
              "  Other advanced rules | 2 | does not apply | 1 | 429 \n"
              "  Rule of the program | a.exe: Deny | would decide | 1 | 439 C:\\a.exe\n"
              "  Question | You are asked. | would decide | 1\n");
    EXPECT_EQ(Told(known, "tcp"),
              "It cannot be told: that depends on what is not known here.\n"
              "  Blocked address |  | not known: Remote address | 3\n"
              "  Protection mode | Normal | does not apply | 1\n"
              "  Advanced rule 2 | Deny TCP, user me | not known: User | 3 | 429 0#1\n"
              "  Advanced rule 3 | Mail out: Allow outgoing TCP | not known: Direction | 2 | 429 7\n"
              "* Advanced rule 4 | Deny all traffic | decides | 3 | 429 0#2\n"
              "  Other advanced rules | 1 | does not apply | 1 | 429 \n"
              "  Rule of the program |  | not known: Program | 1\n"
              "  Question | You are asked. | would decide | 1\n");
}

TEST(WhyReportTest, AnswersInOneSentence) {
    const auto answer = [](KnownRules known, const char* facts) {
        const std::string told = Told(known, facts);
        return told.substr(0, told.find('\n'));
    };
    const std::vector<Ipv4> blocked = {0x010200C0};
    const std::vector<AdvancedRule> none;
    KnownRules known{.blocked = blocked, .mode = ProtectionMode::Normal, .advanced = none, .application = {}};
    EXPECT_EQ(answer(known, "r=192.0.2.1"), "Denied: this address is blocked.");
    EXPECT_EQ(answer(known, "r=1.1.1.1"), "It cannot be told: that depends on what is not known here.");
    known.application = RuleAction::Allow;
    EXPECT_EQ(answer(known, R"(r=1.1.1.1 p=C:\b.exe)"), "Allowed by the rule of the program b.exe.");
    const std::vector<AdvancedRule> denying = {test::RuleIn("deny u=me"), test::RuleIn("deny")};
    const std::vector<AdvancedRule> allowing = {test::RuleIn("allow u=me"), test::RuleIn("allow")};
    known.advanced = denying;
    EXPECT_EQ(answer(known, "r=1.1.1.1"), "Denied in any case; by which rule, depends on what is not known here.");
    known.advanced = allowing;
    EXPECT_EQ(answer(known, "r=1.1.1.1"), "Allowed in any case; by which rule, depends on what is not known here.");
    known.mode = ProtectionMode::AllowAll;
    EXPECT_EQ(answer(known, "r=1.1.1.1"), "Allowed: the protection mode allows everything.");
}

TEST(BlockedAddressesTest, ForgetsThoseWhoseTimeIsOver) {
    BlockedAddresses blocked;
    constexpr FileTime kStart = 1000 * kFileTimePerSecond;
    blocked.Add(1, kStart, 600);
    blocked.Add(2, kStart, 10);
    EXPECT_EQ(blocked.InForce(kStart + 10 * kFileTimePerSecond - 1), (std::vector<Ipv4>{1, 2}));
    EXPECT_EQ(blocked.InForce(kStart + 10 * kFileTimePerSecond), (std::vector<Ipv4>{1}));
    blocked.Add(1, kStart, 20);  // once more: the service counts from then
    EXPECT_EQ(blocked.InForce(kStart + 20 * kFileTimePerSecond), std::vector<Ipv4>());
}

TEST(DecisionFilesTest, TellWhatCouldNotBeRead) {
    const test::TempFolder folder;
    test::FakeClock clock;
    test::FakeOptions options;
    const DecisionFiles files(folder.Path(), clock, options);
    EXPECT_EQ(files.Read().mode, ProtectionMode::Normal);
    options.stored.reset();
    EXPECT_EQ(files.Read().mode, std::nullopt);
    // The paths are those of Windows; elsewhere they are names.
    const std::string rules = folder.Path() + R"(\Rules\rules.conf)";
    const std::string advanced = folder.Path() + R"(\Rules\rules_advanced.conf)";
    std::filesystem::create_directories(std::filesystem::path(rules).parent_path());
    const auto write = [](const std::string& file, const std::string& bytes, std::size_t recordSize) {
        std::ofstream(file, std::ios::binary) << test::EncipherByHand(bytes, recordSize);
    };
    std::string rule = "C:\\a.exe";
    rule.resize(260, '\0');
    write(rules, rule + std::string("\2\0\0\0", 4), 264);
    write(advanced, test::BytesOf(EncodeRule(test::RuleIn("allow udp"))), 712);
    EXPECT_EQ(files.ActionOf("c:\\A.EXE"), RuleAction::Allow);
    EXPECT_EQ(files.ActionOf("C:\\b.exe"), RuleAction::Ask);
    EXPECT_EQ(files.Read().advanced, std::vector<AdvancedRule>{test::RuleIn("allow udp")});
    for (const std::string& file : {rules, advanced}) {
        std::filesystem::remove(file);
        std::filesystem::create_directory(file);
    }
    EXPECT_EQ(files.ActionOf("C:\\a.exe"), std::nullopt);
    EXPECT_EQ(files.Read().advanced, std::nullopt);
    for (const std::string& file : {rules, advanced}) std::filesystem::remove(file);
}

}  // namespace
}  // namespace brennvar
