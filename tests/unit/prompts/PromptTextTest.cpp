#include "prompts/PromptText.h"

#include <gtest/gtest.h>

#include "support/FakeIni.h"

namespace brennvar {
namespace {

// From 192.168.0.5:49152 to 203.0.113.7:25.
PromptFacts MailFacts() {
    return {R"(C:\Mail\mail.exe)", true, "Mail Reader", 6, 0x0500A8C0, 49152, 0x077100CB, 25,
            "mail.example.org",    1};
}

PromptQuestion InEnglish(const PromptFacts& facts) {
    return BuildPromptQuestion(facts, Language(nullptr));
}

TEST(PromptTextTest, BuildsTheBodyFromTheLanguageFile) {
    test::FakeIni::Values texts;
    for (const char* number : {"155", "444", "445", "446", "447", "448", "449", "457", "458", "460", "464", "484",
                               "485", "486", "489"}) {
        texts[std::string("Language/DL_N_201_") + number] = std::string("<") + number + ">";
    }
    texts["Language/DL_N_201_446"] = "";  // never a blank
    const PromptQuestion question =
        BuildPromptQuestion(MailFacts(), Language(std::make_unique<test::FakeIni>(texts)));
    EXPECT_EQ(question.body,
              "Mail Reader\n<457> mail.example.org.\n\n<458>\n<155> 203.0.113.7:25\n<460> <464>\n<484> TCP\n\n"
              "<485> <486>\n\n<489>");
    EXPECT_EQ(question.caption + question.allowButton + question.denyButton, "<444><445>No");
    EXPECT_EQ(question.rememberText, "<447>\n<448>\n<449>");
}

TEST(PromptTextTest, KnowsThreeProtocolsAndTwoKindsOfAdvice) {
    struct Row {
        std::uint32_t protocol;
        std::optional<std::uint32_t> advice;
        std::string_view expected;
    };
    for (const Row& row : {Row{1, 1, "ICMP Allow"}, Row{6, 0, "TCP Deny"}, Row{17, 2, "UDP None"},
                           Row{47, std::nullopt, "47 None"}, Row{0, 0xFFFFFFFF, "0 None"}}) {
        PromptFacts facts = MailFacts();
        facts.protocol = row.protocol;
        facts.advice = row.advice;
        EXPECT_EQ(InEnglish(facts).protocol + " " + InEnglish(facts).advice, row.expected);
    }
}

TEST(PromptTextTest, LetsNoNameBreakTheLinesOrTheForm) {
    struct Row {
        std::string description, host, displayName, remoteHost;
    };
    const std::string forty(40, 'n');
    const Row rows[] = {{"Mail\n\nGeneral advice: Allow", "a\r\nb\tc", "Mail General advice: Allow", "a b c"},
                        {"Caf\xE9 \x80", forty, "Caf\xE9 \x80", forty},  // letters of a code page stay
                        {"  \x01 ", " \n", "mail.exe", "unknown"},
                        // The body has 40 characters of a name, the label all that decide.
                        {"", forty + ".example", "mail.exe", forty + ".example"},
                        {"", "", "mail.exe", "unknown"}};
    for (const Row& row : rows) {
        PromptFacts facts = MailFacts();
        facts.fileDescription = row.description;
        facts.hostName = row.host;
        facts.remotePort = 0;  // an address alone
        facts.path = "C:\\Mail\\x.txt" + std::string(90, ' ') + "\xE2\x80\xAE\\mail.exe";
        EXPECT_EQ(InEnglish(facts).path, "C:\\Mail\\x.txt [RLO]\\mail.exe");
        EXPECT_EQ(InEnglish(facts).displayName, row.displayName);
        EXPECT_EQ(InEnglish(facts).remoteHost, row.remoteHost);
        EXPECT_EQ(InEnglish(facts).remoteAddress, "203.0.113.7");
        const std::string inBody =
            row.remoteHost.size() > 40 ? row.remoteHost.substr(0, 37) + "..." : row.remoteHost;
        EXPECT_TRUE(InEnglish(facts).body.starts_with(row.displayName + "\nis trying to communicate to " + inBody +
                                                      ".\n\n"));
    }
    PromptFacts nameless = MailFacts();
    nameless.fileDescription = " ";
    nameless.path = "C:\\Mail\\ \x01 ";
    EXPECT_EQ(InEnglish(nameless).displayName, "Unknown name");
}

}  // namespace
}  // namespace brennvar
