#include "service/Scenario.h"

#include <gtest/gtest.h>

#include <string>

namespace brennvar::standin {
namespace {

template <class T>
T Only(std::string_view line) {
    const Scenario scenario = ParseScenario(line);
    EXPECT_TRUE(scenario.faults.empty()) << line;
    EXPECT_EQ(scenario.instructions.size(), 1U) << line;
    if (scenario.instructions.size() != 1 || !std::holds_alternative<T>(scenario.instructions[0])) {
        ADD_FAILURE() << line;
        return T{};
    }
    return std::get<T>(scenario.instructions[0]);
}

template <class Record>
std::string BytesOf(const Record& record) {
    return {reinterpret_cast<const char*>(&record), sizeof(record)};
}

TEST(ScenarioTest, SkipsBlankAndCommentLinesAndCountsThem) {
    const Scenario scenario = ParseScenario("# first\n\n  \t\r\n wait  5 \r\nbad\nexit\n wait\n# end");
    EXPECT_EQ(scenario.instructions.size(), 2U);
    ASSERT_EQ(scenario.faults.size(), 2U);
    EXPECT_EQ(scenario.faults[0].line, 5U);
    EXPECT_EQ(scenario.faults[0].text, "bad");
    EXPECT_EQ(scenario.faults[1].line, 7U);
    EXPECT_TRUE(ParseScenario("").instructions.empty());
}

TEST(ScenarioTest, BuildsTableEntriesInNetworkOrder) {
    using namespace std::string_literals;
    EXPECT_EQ(
        BytesOf(Only<ConnectionInstruction>("connection ESTAB-IN 10.0.0.5:1025 1.2.3.4:443 4711 256 7").entry),
        "\x03\0\0\0\x0A\0\0\x05\x04\x01\x01\x02\x03\x04\x01\xBB\x67\x12\0\0\0\x01\0\0\x07\0\0\0"s);
    EXPECT_EQ(Only<ConnectionInstruction>("connection 12 0.0.0.0:0 0.0.0.0:0 0 0 0").entry.state, 12U);
    EXPECT_EQ(BytesOf(Only<ListenerInstruction>("listener udp 127.0.0.1:53 0x10").entry),
              "\x11\0\0\0\x7F\0\0\x01\0\x35\x10\0\0\0"s);
    EXPECT_EQ(Only<ListenerInstruction>("listener 47 127.0.0.1:53 1").entry.protocol, 47U);
    EXPECT_EQ(BytesOf(Only<TotalsInstruction>("totals 0x100000002 3").totals).substr(0, 16),
              "\x02\0\0\0\x01\0\0\0\x03\0\0\0\0\0\0\0"s);
}

TEST(ScenarioTest, BuildsTheQuestionRecord) {
    using namespace std::string_literals;
    const auto question = Only<QuestionInstruction>("question tcp 10.0.0.5:1025 1.2.3.4:80 77 C:\\a b\\c.exe ");
    std::string expected(449, '\0');
    expected.replace(20, 4, "\x06\0\0\0"s);
    expected.replace(24, 4, "\x4D\0\0\0"s);
    expected.replace(34, 6, "\x04\x01\x0A\0\0\x05"s);
    expected.replace(50, 6, "\0\x50\x01\x02\x03\x04"s);
    expected.replace(161, 12, "C:\\a b\\c.exe");
    EXPECT_EQ(BytesOf(question.request), expected);

    const auto bare = Only<QuestionInstruction>("question 47 0.0.0.0:0 1.2.3.4:0 none");
    EXPECT_EQ(bare.request.processId, 0xFFFFFFFFU);
    EXPECT_EQ(bare.request.protocol, 47U);
    EXPECT_EQ(bare.request.path[0], '\0');
}

TEST(ScenarioTest, ReadsTheOtherInstructions) {
    using namespace std::string_literals;
    EXPECT_EQ(Only<WaitForRecordsInstruction>("wait-for-answers 3").channel, Channel::Confirm);
    EXPECT_EQ(Only<WaitForRecordsInstruction>("wait-for-records TRAY 3").channel, Channel::Tray);
    EXPECT_EQ(Only<NoticeInstruction>("notice  two words | link ").text, "two words | link");
    EXPECT_EQ(Only<ProcessInstruction>("process 9 C:\\a b.exe").path, "C:\\a b.exe");
    EXPECT_EQ(Only<RateInstruction>("rate 5 6").outPerSecond, 6U);
    EXPECT_STREQ(Only<DnsInstruction>("dns 1.2.3.4 host.example").record.name, "host.example");
    EXPECT_EQ(BytesOf(Only<MacInstruction>("mac 1.2.3.4 00-11-22-aa-BB-cc").record),
              "\x00\x11\x22\xAA\xBB\xCC\0\0\x01\x02\x03\x04"s);
    EXPECT_EQ(Only<AdviceInstruction>("advice allow C:\\a.exe").record.advice, 1U);
    EXPECT_EQ(Only<AdviceInstruction>("advice deny C:\\a.exe").record.advice, 0U);
    EXPECT_EQ(Only<RuleInstruction>("rule ask C:\\a.exe").action, RuleAction::Ask);
    EXPECT_EQ(Only<OptionInstruction>("option 18 600").value, 600U);
    EXPECT_EQ(Only<OptionTextInstruction>("option-text 4").text, "");
    EXPECT_EQ(Only<OptionTextInstruction>("option-text 35 me at home").text, "me at home");
    const auto hostile = Only<HostileInstruction>("hostile listeners odd 2");
    EXPECT_EQ(hostile.order.request, 0x8E872404U);
    EXPECT_EQ(hostile.order.hostility, Hostility::Odd);
    EXPECT_EQ(hostile.order.answers, 2U);
    EXPECT_EQ(Only<HostileInstruction>("hostile question fail").order.answers, 1U);
}

TEST(ScenarioTest, RefusesDamagedLines) {
    const std::string longText(600, 'x');
    const std::string lines[] = {
        "wait",
        "wait -1",
        "wait 4294967296",
        "wait 0x",
        "wait 5 6",
        "exit 1",
        "Exit",
        "notice",
        "process 1",
        "process x C:\\a.exe",
        "process 1 " + longText,
        "connection ESTAB 1.2.3.4:1 1.2.3.4:2 1 2 3",
        "connection 1 1.2.3.4 1.2.3.4:2 1 2 3",
        "connection 1 1.2.3:1 1.2.3.4:2 1 2 3",
        "connection 1 1.2.3.4:65536 1.2.3.4:2 1 2 3",
        "connection 1 1.2.3.4:1 1.2.3.4:2 1 2",
        "listener tcp 1.2.3.4:1",
        "question tcp 1.2.3.4:1 1.2.3.4:2",
        "question tcp 1.2.3.4:1 1.2.3.4:2 1 " + longText,
        "mac 1.2.3.4 00-11-22-33-44",
        "mac 1.2.3.4 00:11:22:33:44:55",
        "mac 1.2.3.4 00-11-22-33-44-5g",
        "advice ask C:\\a.exe",
        "rule maybe C:\\a.exe",
        "option 1",
        "option-text 1 " + std::string(120, 'x'),
        "hostile connections rude",
        "hostile tables fail",
        "wait-for-records EVENT 1",
    };
    for (const std::string& line : lines) {
        const Scenario scenario = ParseScenario(line);
        EXPECT_EQ(scenario.faults.size(), 1U) << line;
        EXPECT_TRUE(scenario.instructions.empty()) << line;
    }
}

TEST(ScenarioTest, TellsWhatIsScripted) {
    EXPECT_FALSE(ParseScenario("notice x").scriptsTables);
    EXPECT_FALSE(ParseScenario("notice x").scriptsTotals);
    EXPECT_TRUE(ParseScenario("listener tcp 0.0.0.0:1 1").scriptsTables);
    EXPECT_TRUE(ParseScenario("clear-tables").scriptsTables);
    EXPECT_TRUE(ParseScenario("totals 1 1").scriptsTotals);
    EXPECT_FALSE(ParseScenario("totals 1 1").scriptsTables);
}

}  // namespace
}  // namespace brennvar::standin
