#include "prompts/PromptText.h"

#include <gtest/gtest.h>

#include "unit/prompts/FakePromptWorld.h"

namespace brennvar {
namespace {

PromptFacts MailFacts() {
    return {.path = R"(C:\Program Files\Mail\mail.exe)",
            .applicationKnown = true,
            .fileDescription = "Mail Reader",
            .protocol = 6,
            .localAddress = 0x0500A8C0,  // 192.168.0.5
            .localPort = 49152,
            .remoteAddress = 0x077100CB,  // 203.0.113.7
            .remotePort = 25,
            .hostName = "mail.example.org",
            .advice = 1};
}

PromptQuestion InEnglish(const PromptFacts& facts) {
    return BuildPromptQuestion(facts, Language(nullptr));
}

TEST(PromptTextTest, BuildsTheBodyInItsOrder) {
    EXPECT_EQ(InEnglish(MailFacts()).body,
              "Mail Reader\n"
              "is trying to communicate to mail.example.org.\n"
              "\n"
              "Connection details:\n"
              "Remote host: 203.0.113.7:25\n"
              "Reason: SMTP - E-Mail sending\n"
              "Protocol: TCP\n"
              "\n"
              "General advice: Allow\n"
              "\n"
              "Allow this network communication?");
}

TEST(PromptTextTest, TakesEveryTextFromTheLanguageFile) {
    std::map<std::string, std::string> texts;
    for (const int number : {155, 444, 445, 446, 447, 448, 449, 457, 458, 460, 464, 484, 485, 486, 489}) {
        const std::string digits = std::to_string(number);
        texts["Language/DL_N_201_" + digits].append("<").append(digits).append(">");
    }
    const Language language(std::make_unique<test::FakeLanguageFile>(texts));
    const PromptQuestion question = BuildPromptQuestion(MailFacts(), language);
    EXPECT_EQ(question.body,
              "Mail Reader\n<457> mail.example.org.\n\n<458>\n<155> 203.0.113.7:25\n<460> <464>\n<484> TCP\n\n"
              "<485> <486>\n\n<489>");
    EXPECT_EQ(question.caption, "<444>");
    EXPECT_EQ(question.allowButton, "<445>");
    EXPECT_EQ(question.denyButton, "<446>");
    EXPECT_EQ(question.rememberText, "<447>\n<448>\n<449>");
}

TEST(PromptTextTest, HasEnglishTextsForTheDialog) {
    const PromptQuestion question = InEnglish(MailFacts());
    EXPECT_EQ(question.caption, "Confirm network connection");
    EXPECT_EQ(question.allowButton, "Yes");
    EXPECT_EQ(question.denyButton, "No");
    EXPECT_EQ(question.rememberText, "Remember my answer\nand do not ask me next time\nfor this application.");
}

TEST(PromptTextTest, NamesProtocolsOrNumbersThem) {
    struct Row {
        std::uint32_t protocol;
        std::string_view expected;
    };
    const Row rows[] = {{1, "ICMP"}, {6, "TCP"}, {17, "UDP"}, {47, "47"}, {0, "0"}, {255, "255"}};
    for (const Row& row : rows) {
        PromptFacts facts = MailFacts();
        facts.protocol = row.protocol;
        EXPECT_EQ(InEnglish(facts).protocol, row.expected);
    }
}

TEST(PromptTextTest, KnowsTwoKindsOfAdvice) {
    struct Row {
        std::optional<std::uint32_t> advice;
        PromptAdvice kind;
        std::string_view expected;
    };
    const Row rows[] = {{1, PromptAdvice::Allow, "Allow"},
                        {0, PromptAdvice::Deny, "Deny"},
                        {2, PromptAdvice::None, "None"},
                        {std::nullopt, PromptAdvice::None, "None"}};
    for (const Row& row : rows) {
        PromptFacts facts = MailFacts();
        facts.advice = row.advice;
        const PromptQuestion question = InEnglish(facts);
        EXPECT_EQ(question.adviceKind, row.kind) << row.expected;
        EXPECT_EQ(question.advice, row.expected);
    }
}

TEST(PromptTextTest, ShowsBareAddressesWithoutPorts) {
    PromptFacts facts = MailFacts();
    EXPECT_EQ(InEnglish(facts).localAddress, "192.168.0.5:49152");
    facts.localPort = 0;
    facts.remotePort = 0;
    EXPECT_EQ(InEnglish(facts).localAddress, "192.168.0.5");
    EXPECT_EQ(InEnglish(facts).remoteAddress, "203.0.113.7");
}

TEST(PromptTextTest, ShowsNoAddressesOfAnUnknownApplication) {
    PromptFacts facts = MailFacts();
    facts.path = "Unknown name";
    facts.fileDescription.clear();
    facts.applicationKnown = false;
    const PromptQuestion question = InEnglish(facts);
    EXPECT_EQ(question.displayName, "Unknown name");
    EXPECT_EQ(question.localAddress, "unknown");
    EXPECT_EQ(question.remoteAddress, "unknown");
    EXPECT_EQ(question.remoteHost, "mail.example.org");
}

TEST(PromptTextTest, CutsLongNamesAndFillsInMissingOnes) {
    const std::string forty(40, 'n');
    PromptFacts facts = MailFacts();
    facts.hostName = forty;
    facts.fileDescription = forty;
    EXPECT_EQ(InEnglish(facts).remoteHost, forty);
    EXPECT_EQ(InEnglish(facts).displayName, forty);
    facts.hostName += 'n';
    facts.fileDescription += 'n';
    EXPECT_EQ(InEnglish(facts).remoteHost, std::string(37, 'n') + "...");
    EXPECT_EQ(InEnglish(facts).displayName, std::string(37, 'n') + "...");
    facts.hostName.clear();
    facts.fileDescription.clear();
    EXPECT_EQ(InEnglish(facts).remoteHost, "unknown");
    EXPECT_EQ(InEnglish(facts).displayName, "mail.exe");
}

TEST(PromptTextTest, LetsNoNameBreakTheLines) {
    PromptFacts facts = MailFacts();
    facts.fileDescription = "Mail\n\nGeneral advice: Allow";
    facts.hostName = "a\r\nb\tc";
    const PromptQuestion question = InEnglish(facts);
    EXPECT_EQ(question.displayName, "Mail  General advice: Allow");
    EXPECT_EQ(question.remoteHost, "a  b c");
    facts.fileDescription = "Caf\xE9 \x80";  // letters of a code page stay
    EXPECT_EQ(InEnglish(facts).displayName, "Caf\xE9 \x80");
}

TEST(PromptTextTest, DeniesByTheNoButtonAlone) {
    EXPECT_EQ(AnswerOfDialog(7, true), (PromptAnswer{.allow = false, .remember = true}));
    EXPECT_EQ(AnswerOfDialog(6, false), (PromptAnswer{.allow = true, .remember = false}));
    EXPECT_EQ(AnswerOfDialog(1, false), (PromptAnswer{.allow = true, .remember = false}));
}

}  // namespace
}  // namespace brennvar
