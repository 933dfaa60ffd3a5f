// What can be done with a row of the connections, and what is told of it.
#include "config/ResourceIds.h"
#include "unit/views/ConnectionsRig.h"

namespace brennvar {
namespace {

using test::Listener;
using test::PathAnswer;

class ConnectionActionsTest : public test::ConnectionsRig {};

TEST_F(ConnectionActionsTest, OffersWhatCanBeDoneWithARow) {
    // Details, block, terminate, trace route, whois, locate, folder, rule, make a rule, why.
    SetConnections({Connection(26, 1, 3), Connection(26, 2, 4), Connection(0, 3, 7), Connection(4, 4, 4),
                    Connection(0xFFFFFFFF, 5, 10)});
    SetListeners({Listener(6, 80, 26)});
    ASSERT_TRUE(ReadRows());
    const char* const offered[] = {"1111111111", "1111111111", "1101111111",
                                   "1001110011", "1001111111", "1010001111"};
    for (int row = 0; row < 6; ++row) EXPECT_EQ(Offered(row), offered[row]) << row << Text(row, Column::State);
    Do(IDC_ADDRESS_LOCATE, 0);
    Do(IDC_ADDRESS_LOCATE, 5);
    EXPECT_EQ(view.links,
              std::vector<std::string>{"https://www.brennvar.example/locate/index.php?ip=93%2E184%2E216%2E34"});
    Do(IDC_ADDRESS_WHOIS, 0);
    Do(IDC_ADDRESS_WHOIS, 5);  // a listener has no other side
    model->Do(IDC_ADDRESS_TRACE_ROUTE, {});
    EXPECT_TRUE(model->CanDo(IDC_ADDRESS_TRACE_ROUTE, -1));
    EXPECT_EQ(view.tools, (std::vector<std::pair<AddressTool, std::string>>{{AddressTool::WhoIs, "93.184.216.34"},
                                                                            {AddressTool::TraceRoute, ""}}));
    Do(IDC_CONNECTIONS_FOLDER, 0);
    Do(IDC_CONNECTIONS_FOLDER, 3);
    EXPECT_EQ(view.folders, std::vector<std::string>{"c:\\tools\\a.exe"});
    Do(IDC_CONNECTIONS_RULE, 5);
    EXPECT_EQ(view.commands, std::vector<int>{IDM_APPLICATIONS});
    EXPECT_EQ(view.openedKey, "c:\\tools\\a.exe");
    Do(IDC_WHY, 0);
    Do(IDC_MAKE_RULE, 5);
    const TrafficFacts& out = view.explained.at(0);
    EXPECT_EQ(out.program, "c:\\tools\\a.exe");
    EXPECT_EQ(out.protocol, 6U);
    EXPECT_EQ(out.remoteAddress, ParseIpv4("93.184.216.34"));
    const TrafficFacts& listener = view.made.at(0);
    EXPECT_EQ(listener.direction, TrafficDirection::Incoming);
    EXPECT_EQ(listener.localPort, 80);
    // Whose identifier it is once the connection has gone, nobody knows.
    SetConnections({});
    ASSERT_TRUE(ReadRows());
    EXPECT_EQ(model->Mark(0), RowMark::Gone);
    EXPECT_EQ(Offered(0), "1101111111");
}

TEST_F(ConnectionActionsTest, BlocksTheOtherSideForTheTimeOfTheOption) {
    SetConnections({Connection(26, 1, 3), Connection(26, 2, 7)});
    ASSERT_TRUE(ReadRows());
    options.stored->values.SetNumber(OptionId::BlockSeconds, 0x102);
    Do(IDC_CONNECTIONS_BLOCK, 1);
    EXPECT_EQ(rig.password.asked, 0) << "not in this state";
    Do(IDC_CONNECTIONS_BLOCK, 0);
    EXPECT_EQ(rig.password.asked, 1);
    reads.RunAll();
    EXPECT_EQ(
        rig.TakeRecords(),
        (std::vector{test::ZerosWith(5596, {{0, "\x02"}, {4744, "\x5D\xB8\xD8\x22"}}),
                     test::ZerosWith(5596, {{0, "\x01"},
                                            {4, "Blocked connection"},
                                            {132, "93.184.216.34"},
                                            {644, "\x02"},
                                            {648, "IP: 93.184.216.34. Blocking IP address for 258 seconds"}})}));
    EXPECT_EQ(blocked.InForce(clock.UtcNow() + 257 * kFileTimePerSecond), std::vector{*ParseIpv4("93.184.216.34")});
    EXPECT_EQ(view.told, std::vector<std::string>{
                             "Blocked connection: IP: 93.184.216.34. Blocking IP address for 258 seconds"});
    // A file that cannot be read, and a password that is refused.
    options.stored.reset();
    Do(IDC_CONNECTIONS_BLOCK, 0);
    reads.RunAll();
    rig.Settle();
    EXPECT_TRUE(view.told.back().ends_with(" for 600 seconds"));
    rig.password.answer = test::FakePassword::Answer::Refuse;
    (void)rig.TakeRecords();
    Do(IDC_CONNECTIONS_BLOCK, 0);
    reads.RunAll();
    EXPECT_TRUE(rig.TakeRecords().empty());
    EXPECT_EQ(view.told.size(), 2U);
}

TEST_F(ConnectionActionsTest, TerminatesTheProgramThatTheUserWasAskedAbout) {
    files.descriptions["c:\\tools\\a.exe"] = "Alpha";
    SetConnections({Connection(26, 1, 3), Connection(27, 2, 4)});
    ASSERT_TRUE(ReadRows());
    programQueue.RunAll();
    ASSERT_TRUE(RunUntilRows());
    const auto ask = [this](int row) { return model->Question(IDC_CONNECTIONS_TERMINATE, {&row, 1}); };
    const auto question = ask(0);
    ASSERT_TRUE(question);
    EXPECT_EQ(question->yes, "Terminate");
    EXPECT_TRUE(question->text.starts_with("Alpha\nc:\\tools\\a.exe\nProcess ID: 26\n\n")) << question->text;
    Do(IDC_CONNECTIONS_TERMINATE, 1);
    EXPECT_EQ(rig.password.asked, 0) << "another row has come under the focus";
    (void)ask(0);
    Do(IDC_CONNECTIONS_TERMINATE, 0);
    EXPECT_EQ(rig.TakeRecords(),
              (std::vector{
                  test::ZerosWith(5596, {{0, "\x03"}, {4748, "\x1A"}}),
                  test::ZerosWith(
                      5596, {{0, "\x01"}, {4, "Process termination"}, {132, "c:\\tools\\a.exe"}, {644, "\x02"}})}));
    Do(IDC_CONNECTIONS_TERMINATE, 0);
    EXPECT_TRUE(rig.TakeRecords().empty()) << "asked about once, ended once";

    // While the password is entered the identifier goes to another program.
    rig.password.answer = test::FakePassword::Answer::Later;
    (void)ask(0);
    Do(IDC_CONNECTIONS_TERMINATE, 0);
    connector->Pipe().server = [](const auto&) { return PathAnswer("C:\\Other.exe"); };
    ASSERT_TRUE(ReadRows());
    rig.password.Give(true);
    EXPECT_TRUE(rig.TakeRecords().empty());
    const std::string over =
        "Process termination: The program has ended, or its process is another one now. Nothing was terminated.";
    EXPECT_EQ(view.told, std::vector{over});
    // Or its last connection is closed meanwhile: whose identifier it is, nobody knows.
    ASSERT_TRUE(ask(0));
    Do(IDC_CONNECTIONS_TERMINATE, 0);
    SetConnections({});
    ASSERT_TRUE(ReadRows());
    rig.password.Give(true);
    EXPECT_TRUE(rig.TakeRecords().empty());
    EXPECT_EQ(view.told, (std::vector{over, over}));
    EXPECT_FALSE(model->Question(IDC_CONNECTIONS_BLOCK, std::vector{0}));
}

TEST_F(ConnectionActionsTest, PathsAndNamesWithLineBreaksStayOneLine) {
    connector->Pipe().server = [](const auto&) { return PathAnswer("c:\\x\nProcess ID: 1\r\\a\tb.exe"); };
    SetConnections({Connection(26, 1, 4)});
    ASSERT_TRUE(ReadRows());
    const std::string path = "c:\\x process id: 1 \\a b.exe";
    EXPECT_EQ(Text(0, Column::Process), "a b.exe");
    EXPECT_EQ(Text(0, Column::Path), path);
    EXPECT_EQ(Tip(0, Column::Process), path);
    const auto question = model->Question(IDC_CONNECTIONS_TERMINATE, std::vector{0});
    ASSERT_TRUE(question);
    EXPECT_TRUE(question->text.starts_with("a b.exe\n" + path + "\nProcess ID: 26\n\n")) << question->text;
    Do(IDC_CONNECTIONS_DETAILS, 0);
    EXPECT_EQ(view.sheets.at(0).groups.at(0).lines.back().value, path);
    Do(IDC_CONNECTIONS_RULE, 0);
    EXPECT_EQ(view.openedKey, "c:\\x\nprocess id: 1\r\\a\tb.exe") << "looked up as it is";
    // A description in the place of the file's name.
    files.descriptions[view.openedKey] = "Al\npha";
    ASSERT_TRUE(ReadRows(ReadReason::Shown));
    programQueue.RunAll();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Text(0, Column::Process), "Al pha");
    // Found by what is shown.
    model->ArrangeBy({.searched = "1 \\a b"});
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->RowCount(), 1);
    model->Choose(IDC_CONNECTIONS_GROUPED, 1);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Text(0, Column::Path), path);
}

TEST_F(ConnectionActionsTest, DetailsComeAtOnceAndWhatTheLogsKnowLater) {
    SetConnections({Connection(26, 50000, 2, 7)});
    SetListeners({Listener(17, 53, 0)});
    ASSERT_TRUE(ReadRows());
    data.Write(R"(\Log\20260309_dns.log)",
               "\x5D\xB8\xD8\x22" + std::string("www.example.com") + std::string(241, '\0'));
    const auto lines = [](const DetailsSheet& sheet) {
        std::string text = sheet.title + " " + FormatIpv4(sheet.address) + "\n";
        for (const DetailsGroup& group : sheet.groups) {
            for (const DetailsLine& line : group.lines) text += line.label + " " + line.value + "\n";
        }
        return text;
    };
    Do(IDC_CONNECTIONS_DETAILS, 0);
    ASSERT_EQ(view.sheets.size(), 1U);
    EXPECT_EQ(lines(view.sheets[0]),
              "Connection details 93.184.216.34\n"
              "Local/Remote IP: 10.0.0.1 -> 93.184.216.34\n"
              "Local/Remote domain: ... -> ...\n"
              "Local/Remote MAC: ... -> ...\n"
              "Bytes In/Out: 7 / 0\n"
              "Status: SYN-RCVD\n"
              "Process: c:\\tools\\a.exe\n"
              "Ports: 50000 -> 443\nAge: >0:00\nRate in/out: 0 B/s / 0 B/s\nProgram: a.exe\nProcess ID: 26\n");
    reads.RunAll();
    ASSERT_EQ(view.sheets.size(), 2U);
    EXPECT_NE(
        lines(view.sheets[1]).find("domain: unknown -> www.example.com\nLocal/Remote MAC: unknown -> unknown\n"),
        std::string::npos)
        << lines(view.sheets[1]);
    // What was looked up for an earlier sheet is not shown in the next one.
    Do(IDC_CONNECTIONS_DETAILS, 0);
    Do(IDC_CONNECTIONS_DETAILS, 1);
    reads.RunAll();
    ASSERT_EQ(view.sheets.size(), 5U);
    EXPECT_EQ(lines(view.sheets[4]),
              "Connection details 0.0.0.0\n"
              "Local IP: 0.0.0.0\n"
              "Local domain: unknown\n"
              "Local MAC: unknown\n"
              "Bytes In/Out: 0 / 0\n"
              "Status: LISTEN-UDP\n"
              "Process: no process associated\n"
              "Ports: 53\nAge: >0:00\nProgram: no process associated\nProcess ID: 0\n");
}

}  // namespace
}  // namespace brennvar
