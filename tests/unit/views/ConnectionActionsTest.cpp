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
    // A file that cannot be read.
    options.stored.reset();
    Do(IDC_CONNECTIONS_BLOCK, 0);
    reads.RunAll();
    rig.Settle();
    EXPECT_TRUE(view.told.back().ends_with(" for 600 seconds"));
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
    const auto question = model->Question(IDC_CONNECTIONS_TERMINATE, std::vector{0});
    ASSERT_TRUE(question);
    EXPECT_TRUE(question->text.starts_with("a b.exe\n" + path + "\nProcess ID: 26\n\n")) << question->text;
    // Found by what is shown.
    model->ArrangeBy({.searched = "1 \\a b"});
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->RowCount(), 1);
}

}  // namespace
}  // namespace brennvar
