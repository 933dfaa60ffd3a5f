#include "views/ConnectionsModel.h"

#include "config/ResourceIds.h"
#include "unit/views/ConnectionsRig.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::Listener;

class ConnectionsModelTest : public test::ConnectionsRig {};

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
    EXPECT_EQ(Text(0, Column::Received), "2.9 KB");
    EXPECT_EQ(Text(0, Column::ProcessId) + Text(3, Column::ProcessId), "1") << "several processes have no number";
    EXPECT_EQ(model->Program(0), "c:\\tools\\a.exe");
    EXPECT_EQ(Offered(0), "0000001100");
    model->SetExpanded(0, false);
    EXPECT_EQ(model->RowCount(), 5);
    SetConnections({Connection(26, 80, 4, 3048), Connection(52, 81, 4, 2000)});
    ASSERT_TRUE(ReadRows());
    model->SetExpanded(0, true);
    model->SetExpanded(1, true);  // a member has nothing below it
    EXPECT_EQ(model->RowCount(), 7);
    EXPECT_EQ(model->AllRowCount(), 7);

    model->Choose(IDC_CONNECTIONS_GROUPED, 0);
    ASSERT_TRUE(RunUntilRows());
    model->Choose(IDC_CONNECTIONS_FILTER, 2);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::State), "LISTEN-UDP ");
    EXPECT_EQ(model->AllRowCount(), 1);
    EXPECT_EQ(userValues.stored,
              (std::map<std::string, std::uint32_t>{{"ConnectionsGrouped", 0}, {"ConnectionsFilter", 2}}));
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
