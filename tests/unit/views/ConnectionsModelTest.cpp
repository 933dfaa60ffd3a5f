#include "views/ConnectionsModel.h"

#include <set>

#include "config/ResourceIds.h"
#include "unit/views/ConnectionsRig.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::Listener;

class ConnectionsModelTest : public test::ConnectionsRig {};

TEST_F(ConnectionsModelTest, TakesWhatIsReadWhileItIsShown) {
    OpenGate();
    EXPECT_TRUE(model->EmptyText().starts_with("Reading the connections."));
    EXPECT_EQ(model->Summary(), std::nullopt);
    EXPECT_EQ(model->RowCount(), 0);
    SetConnections({Connection(26, 80, 4, 655'360)});
    model->Read(ReadReason::Shown);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(view.Row(0),
              "a.exe\t10.0.0.1:80 -> 93.184.216.34:443\tESTAB-OUT\t\t\t640 KB\t0 B\t>0:00\tc:\\tools\\a.exe\t26");
    EXPECT_EQ(Tip(0, Column::Received),
              "655\xA0"
              "360 bytes");
    EXPECT_EQ(Tip(0, Column::Process), "c:\\tools\\a.exe");
    EXPECT_EQ(Tip(0, Column::State), "Established, opened by this computer.");
    EXPECT_EQ(model->Summary(), "Connections: 1, programs: 1, listening: 0");
    SetConnections({Connection(26, 80, 4, 655'360 + 4096), Connection(27, 81, 7)});
    SetListeners({Listener(6)});
    clock.Pass(2s);
    tables.Refresh();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::RateIn), "2.0 KB/s   ");
    EXPECT_TRUE(Tip(0, Column::Received).ends_with("bytes, 2.0 KB/s"));
    EXPECT_TRUE(Tip(0, Column::Sent).ends_with("bytes"));
    EXPECT_EQ(Texts(Column::Sent), "0 B 0 B  ") << "a listener has no bytes";
    EXPECT_EQ(model->Mark(1), RowMark::New);
    EXPECT_EQ(model->Summary(), "Connections: 2, programs: 2, listening: 1; most: a.exe 2.0 KB/s");
    const CellGlyph glyphs[] = {CellGlyph::Filled, CellGlyph::Hollow, CellGlyph::Bar};
    for (int row = 0; row < 3; ++row) EXPECT_EQ(model->Cell(row, 2).glyph, glyphs[row]) << row;
    SetConnections({});
    SetListeners({});
    tables.Refresh();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->Mark(2), RowMark::Gone);
    EXPECT_EQ(model->Cell(2, 0).tone, Tone::Muted);
    tables.Refresh();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->EmptyText(), "There are no connections and no listening ports.");
    model->Read(ReadReason::RulesChanged);
    model->OnHidden();
    tables.Refresh();
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "");
}

TEST_F(ConnectionsModelTest, RowsStayWhenTheDriverIsGone) {
    ASSERT_TRUE(ReadRows());
    driver.isPresent = false;
    model->Read(ReadReason::Wished);
    ASSERT_TRUE(RunUntilRows("es"));
    EXPECT_TRUE(model->EmptyText().starts_with("The connections cannot be read"));
    EXPECT_EQ(model->RowCount(), 1);
    EXPECT_EQ(model->Summary(), std::nullopt);
}

TEST_F(ConnectionsModelTest, FindsItsRowsByTheirKeys) {
    SetConnections({Connection(2, 81, 1), Connection(2, 81, 10), Connection(2, 80, 1), Connection(3, 81, 1)});
    SetListeners({Listener(6, 81, 2)});
    ASSERT_TRUE(ReadRows());
    std::vector<std::string> keys;
    for (int row = 0; row < 5; ++row) keys.push_back(model->Key(row));
    EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), 5U);
    for (int row = 0; row < 5; ++row) EXPECT_EQ(model->FindRow(keys[static_cast<std::size_t>(row)]), row);
    // Sorted, searched, grouped and closed.
    model->ArrangeBy({.searched = "syn", .column = static_cast<int>(Column::ProcessId), .isAscending = false});
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::ProcessId), "3 2 2 ");
    EXPECT_EQ(model->AllRowCount(), 5);
    EXPECT_EQ(model->FindRow(keys[4]), -1);
    EXPECT_EQ(model->FindRow(keys[2]), 0);
    model->Choose(IDC_CONNECTIONS_GROUPED, 1);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::Process), "d.exe (d.exe) c.exe (c.exe) (c.exe) ");
    for (int row = 0; row < 5; ++row) EXPECT_EQ(model->FindRow(model->Key(row)), row);
    model->SetExpanded(0, false);
    EXPECT_EQ(model->FindRow(keys[2]), -1) << "its program is closed";
    EXPECT_EQ(model->FindRow(keys[0]), 2);
    for (const char* const wrong : {"", "x", "r", "rshort", "gnowhere"}) EXPECT_EQ(model->FindRow(wrong), -1);
    const std::vector<std::string> states = model->Columns().at(2).longest;
    EXPECT_EQ(states.size(), 15U);
    EXPECT_NE(std::find(states.begin(), states.end(), "LISTEN-UDP"), states.end());
}

TEST_F(ConnectionsModelTest, GroupsKeepTheirStateAndSumWhatBelongsToThem) {
    userValues.stored = {{"ConnectionsGrouped", 1}, {"ConnectionsFilter", 3}};  // no such filter
    model = MakeModel();
    model->ShowIn(view);
    SetConnections({Connection(26, 80, 4, 1000), Connection(52, 81, 4, 2000), Connection(1, 82, 4)});
    SetListeners({Listener(17, 53, 0)});
    ASSERT_TRUE(ReadRows());
    EXPECT_EQ(Texts(Column::Process),
              "a.exe (a.exe) (a.exe) b.exe (b.exe) no process associated "
              "(no process associated) ");
    EXPECT_EQ(Text(0, Column::Address), "Entries: 2");
    EXPECT_EQ(Text(0, Column::Received), "2.9 KB");
    EXPECT_EQ(Tip(0, Column::Received), "3000 bytes");
    EXPECT_EQ(Text(0, Column::ProcessId) + Text(3, Column::ProcessId), "1") << "several processes have no number";
    EXPECT_EQ(model->Program(0), "c:\\tools\\a.exe");
    EXPECT_EQ(model->Program(1), std::nullopt);
    EXPECT_EQ(model->Program(5), "");
    EXPECT_EQ(Offered(0), "0000001100");
    EXPECT_EQ(Offered(5), "0000000000");
    model->SetExpanded(0, false);
    EXPECT_EQ(model->RowCount(), 5);
    EXPECT_FALSE(model->Shape(0).isExpanded);
    SetConnections({Connection(26, 80, 4, 3048), Connection(52, 81, 4, 2000)});
    ASSERT_TRUE(ReadRows());
    EXPECT_EQ(Texts(Column::RateIn), "1.0 KB/s  ()  () ");
    EXPECT_EQ(Texts(Column::Age), ">0:02 >0:02 (>0:02) >0:02 (>0:02) ") << "b.exe has gone and is still shown";
    model->SetExpanded(0, true);
    model->SetExpanded(1, true);  // a member has nothing below it
    EXPECT_EQ(model->RowCount(), 7);
    EXPECT_EQ(model->AllRowCount(), 7);

    model->ArrangeBy({.searched = "nowhere"});
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->RowCount(), 0);
    EXPECT_EQ(model->EmptyText(), "No entry contains this text.");
    model->ArrangeBy({});
    ASSERT_TRUE(RunUntilRows());

    model->Choose(IDC_CONNECTIONS_GROUPED, 0);
    ASSERT_TRUE(RunUntilRows());
    model->Choose(IDC_CONNECTIONS_FILTER, 2);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::State), "LISTEN-UDP ");
    EXPECT_EQ(model->AllRowCount(), 1);
    EXPECT_EQ(userValues.stored,
              (std::map<std::string, std::uint32_t>{{"ConnectionsGrouped", 0}, {"ConnectionsFilter", 2}}));
    model->Choose(IDC_CONNECTIONS_FILTER, 3);
    EXPECT_EQ(model->Choices().at(0).chosen, 2);
    ASSERT_TRUE(RunUntilRows());
    SetListeners({});
    ASSERT_TRUE(ReadRows());
    ASSERT_TRUE(ReadRows());
    EXPECT_EQ(model->EmptyText(), "There are no such connections now.");
    model->ArrangeBy({.searched = "nowhere"});
    EXPECT_EQ(model->EmptyText(), "There are no such connections now.") << "whatever is searched";
}

TEST_F(ConnectionsModelTest, ServiceThatHangsHoldsUpTheNamesAndNotTheList) {
    // The first reading waits for the service; the second one is shown without it.
    model->Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "");
    model->Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bRs");
    EXPECT_EQ(Text(0, Column::Process), "no process associated");
    // Once the service has answered, the newest tables have the name, and what came with them is still new.
    SetConnections({Connection(26, 443, 4)});
    model->Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bRs");
    OpenGate();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::Process), "no process associated a.exe ");
    EXPECT_EQ(model->Mark(0), RowMark::Gone);
    EXPECT_EQ(model->Mark(1), RowMark::New);
    EXPECT_EQ(link.Service(), PeerState::Reachable);
}

TEST_F(ConnectionsModelTest, LooksPathsUpUntilTheirOwnPipeIsMissing) {
    ASSERT_TRUE(ReadRows(ReadReason::Shown));
    const auto call = [this](const char* missing) {
        connector->missing = missing;
        bool isOver = false;
        link.SendToFilter([](FilterQueue& queue) { queue.FILTER_SET_PROXY_PORT(1); }, [&](bool) { isOver = true; });
        EXPECT_TRUE(RunUntil([&] { return isOver; }));
    };
    call(kFilterQueuePipeName);
    EXPECT_EQ(link.Service(), PeerState::Missing);
    SetConnections({Connection(27, 81, 4)});
    ASSERT_TRUE(ReadRows());
    EXPECT_EQ(Texts(Column::Process), "a.exe b.exe ");
}

TEST_F(ConnectionsModelTest, OpenedAnewNothingIsNewOrGoneWhicheverReadingIsShownFirst) {
    ASSERT_TRUE(ReadRows(ReadReason::Shown));
    model->OnHidden();
    SetConnections({Connection(27, 81, 4)});
    // The service hangs: the first reading waits for it, and the second one is shown before.
    std::promise<void> answer;
    connector->Pipe().server = [answered = answer.get_future().share()](const auto&) {
        answered.wait();
        return test::FakePipe::Bytes();
    };
    model->Read(ReadReason::Shown);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "");
    clock.Pass(2s);
    model->Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bRs");
    EXPECT_EQ(Texts(Column::Address), "10.0.0.1:81 -> 93.184.216.34:443 ");
    EXPECT_EQ(model->Mark(0), RowMark::None);
    answer.set_value();
    EXPECT_TRUE(RunUntilRows());
    EXPECT_EQ(model->Mark(0), RowMark::None) << "the same reading";
    // From then on what comes is new.
    SetConnections({Connection(27, 81, 4), Connection(27, 82, 4)});
    ASSERT_TRUE(ReadRows());
    EXPECT_EQ(model->Mark(1), RowMark::New);
}

TEST_F(ConnectionsModelTest, DiskThatHangsHoldsUpTheDescriptionsOnly) {
    files.descriptions["c:\\tools\\a.exe"] = "Alpha";
    ASSERT_TRUE(ReadRows());
    ASSERT_TRUE(ReadRows());
    EXPECT_EQ(Text(0, Column::Process), "a.exe");
    EXPECT_EQ(programQueue.Waiting(), 1U) << "asked for once";
    SetConnections({Connection(26, 80, 4), Connection(26, 81, 4)});
    ASSERT_TRUE(ReadRows());
    programQueue.RunAll();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::Process), "Alpha Alpha ");
    EXPECT_EQ(model->Mark(1), RowMark::New) << "the same reading";
    (void)files.Looked();
    ASSERT_TRUE(ReadRows(ReadReason::Shown));
    programQueue.RunAll();
    EXPECT_EQ(files.Looked(), "sc:\\tools\\a.exe ") << "opened anew, the page looks whether it is the same file";
}

TEST_F(ConnectionsModelTest, ServiceThatDoesNotAnswerIsAskedOncePerReading) {
    SetConnections({Connection(7, 1, 4), Connection(8, 1, 4), Connection(9, 1, 4)});
    connector->Pipe().outcome = PipeOutcome::TimedOut;
    OpenGate();
    model->Read(ReadReason::Wished);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->RowCount(), 3);
    EXPECT_EQ(connector->Pipe().requests.size(), 1U);
}

TEST_F(ConnectionsModelTest, NothingIsDeliveredToAModelThatHasGone) {
    model->Read(ReadReason::Wished);
    reads.RunAll();
    model.reset();
    OpenGate();
    bool isOver = false;
    link.Ask<int>([](ServicePipes&) { return 0; }, [&](const auto&) { isOver = true; });
    ASSERT_TRUE(RunUntil([&] { return isOver; }));
    EXPECT_EQ(view.TakeChanges(), "");
}

}  // namespace
}  // namespace brennvar
