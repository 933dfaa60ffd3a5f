#include "prompts/PromptWorld_win.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "ipc/RecordCipher.h"
#include "support/FakeClock.h"
#include "support/FakePipe.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

constexpr char kMailPath[] = R"(C:\Mail\mail.exe)";
constexpr Ipv4 kRemote = 0x077100CB;  // 203.0.113.7

class PromptWorldWinTest : public testing::Test {
protected:
    PromptWorldWinTest() {
        std::filesystem::create_directories(data.File("Rules"));
        std::filesystem::create_directories(data.File("Log"));
        std::filesystem::create_directories(installation.File("Languages/Deutsch"));
    }

    test::TempFolder data, installation;
    test::FakePipe pipe;
    test::FakeClock clock;
    WinPromptWorld world{data.Path(), installation.Path(), pipe, clock,
                         [](const PromptQuestion& question) { return AnswerOfDialog(7, question.path.empty()); }};
};

TEST_F(PromptWorldWinTest, ReadsRulesNamesAndAdviceOfTheDataFolder) {
    EXPECT_EQ(world.LookupAction(kMailPath), RuleAction::Ask);
    EXPECT_EQ(world.HostName(kRemote), "");
    EXPECT_EQ(world.Advice(kMailPath), std::nullopt);

    std::string rule(kMailPath);
    rule.resize(264, '\0');
    rule[260] = 2;
    CipherRecords(std::as_writable_bytes(std::span(rule)), rule.size());
    data.Write("Rules/rules.conf", rule);
    std::string name("\xCB\x00\x71\x07mail.example.org", 20);
    name.resize(260, '\0');
    data.Write("Log/20260309_dns.log", name);
    std::string advice(kMailPath);
    advice.resize(404, '\0');
    advice[400] = 1;
    data.Write("advice.dat", advice);

    EXPECT_EQ(world.LookupAction(kMailPath), RuleAction::Allow);
    EXPECT_EQ(world.HostName(kRemote), "mail.example.org");
    EXPECT_EQ(world.Advice(kMailPath), 1U);
}

TEST_F(PromptWorldWinTest, LoadsTheLanguageThatIsChosenNow) {
    installation.Write("Languages/Deutsch/default.ini", "[Language]\r\nDL_N_201_445=Ja\r\n");
    EXPECT_EQ(world.LoadLanguage().GetText(445, "Yes"), "Yes");
    data.Write("settings.ini", "[Language]\r\nDirectory=Deutsch\r\n");
    EXPECT_EQ(world.LoadLanguage().GetText(445, "Yes"), "Ja");
    EXPECT_EQ(world.LoadLanguage().GetText(446, "No"), "No");
}

TEST_F(PromptWorldWinTest, AsksTheServiceForAProcess) {
    pipe.server = [](const test::FakePipe::Message& message) {
        EXPECT_EQ(message.pipe, R"(\\.\pipe\BRENNVAR_PID_RESOLVE)");
        test::FakePipe::Bytes answer(520);
        answer[0] = std::byte{2};
        std::memcpy(answer.data() + 8, kMailPath, sizeof kMailPath);
        return answer;
    };
    EXPECT_EQ(world.ResolveProcessPath(4711), kMailPath);
}

TEST_F(PromptWorldWinTest, SendsTheAnswerAsOneMessageOrLosesIt) {
    ConnectionPromptAnswer answer{};
    answer.kind = kPromptAnswerKind;
    world.SendAnswer(answer);
    ASSERT_EQ(pipe.writes.size(), 1U);
    EXPECT_EQ(pipe.writes[0].pipe, R"(\\.\pipe\BRENNVAR_IPC_CONFIRM)");
    EXPECT_EQ(pipe.writes[0].bytes.size(), 276U);
    EXPECT_EQ(pipe.writes[0].bytes[0], std::byte{3});

    pipe.failingWaits = test::FakePipe::kAlways;
    world.SendAnswer(answer);
    EXPECT_EQ(pipe.writes.size(), 1U);
    EXPECT_EQ(pipe.waits.size(), 2U);  // one for each answer, no retry
    EXPECT_EQ(pipe.waits[1].limit, std::chrono::seconds(20));
}

TEST_F(PromptWorldWinTest, PassesTheQuestionToTheDialog) {
    EXPECT_EQ(world.Ask(PromptQuestion{}), (PromptAnswer{.allow = false, .remember = true}));
}

}  // namespace
}  // namespace brennvar
