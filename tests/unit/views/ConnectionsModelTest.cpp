#include "views/ConnectionsModel.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <set>
#include <thread>

#include "ipc/PipeRecords.h"
#include "support/FakeDevice.h"
#include "support/FakeListView.h"
#include "support/FakePipe.h"
#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

// A service that lets each wait for its pipe hang until the gate is opened.
class GatedConnector final : public PipeConnector {
public:
    explicit GatedConnector(std::shared_future<bool> gate) : m_gate(std::move(gate)) {
        m_pipe.server = [](const test::FakePipe::Message&) {
            PidResolveAnswer answer{};
            answer.status = kServiceAnswerValid;
            PutText(answer.path, R"(C:\Tools\A.exe)");
            const auto bytes = RecordBytes(answer);
            return test::FakePipe::Bytes(bytes.begin(), bytes.end());
        };
    }
    bool WaitForInstance(const std::string&, std::chrono::milliseconds) override { return m_gate.get(); }
    std::unique_ptr<PipeConnection> Open(const std::string& name) override { return m_pipe.Open(name); }

    test::FakePipe& Pipe() { return m_pipe; }  // before the gate is opened, or after the last answer

private:
    std::shared_future<bool> m_gate;
    test::FakePipe m_pipe;
};

class ConnectionsModelTest : public testing::Test {
protected:
    std::promise<bool> gate;
    bool isGateOpen = false;
    GatedConnector* connector = nullptr;
    test::FakeDriver driver;
    test::FakeTaskQueue reads;
    ServiceLink link{[] {},
                     [this](const StopSignal&) {
                         auto made = std::make_unique<GatedConnector>(gate.get_future().share());
                         connector = made.get();
                         return made;
                     }};
    Language language{nullptr};
    std::unique_ptr<ConnectionsModel> model = std::make_unique<ConnectionsModel>(language, driver, reads, link);
    test::FakeListView view{*model};

    // Whatever the test has come to: the link must not wait for ever.
    void TearDown() override {
        if (!isGateOpen) OpenGate();
    }
    void OpenGate() {
        isGateOpen = true;
        gate.set_value(true);
    }

    void SetUp() override {
        driver.answers[kControlReadListeners];
        SetConnections({Connection(7, 80, 4)});
    }
    static ConnectionEntry Connection(std::uint32_t processId, std::uint16_t localPort, std::uint32_t state) {
        return {state, 0, SwapPort(localPort), 0, 0, processId, 4'000'000'000, 0};
    }
    void SetConnections(const std::vector<ConnectionEntry>& entries) {
        auto& table = driver.answers[kControlReadConnections];
        table.clear();
        for (const ConnectionEntry& entry : entries) {
            const auto bytes = RecordBytes(entry);
            table.insert(table.end(), bytes.begin(), bytes.end());
        }
    }
    // Lets what waits be done until the condition holds.
    template <class Condition>
    [[nodiscard]] bool RunUntil(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            reads.RunAll();
            link.RunCompletions();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return condition();
    }
    [[nodiscard]] bool RunUntilRows(const std::string& wanted) {
        std::string changes;
        return RunUntil([&] { return (changes += view.TakeChanges()) == wanted; });
    }
};

TEST_F(ConnectionsModelTest, IsReadWhenShownAndThenInItsPeriodUntilHidden) {
    OpenGate();
    EXPECT_TRUE(model->EmptyText().starts_with("Reading the connections."));
    model->Read(ReadReason::Shown);
    EXPECT_EQ(view.wake, ConnectionsModel::kPeriod);
    ASSERT_TRUE(RunUntilRows("bR"));
    EXPECT_EQ(view.Row(0), "a.exe\t0.0.0.0:80 -> 0.0.0.0:0\tESTAB-OUT\t7\t4000000000\t0\tc:\\tools\\a.exe");
    SetConnections({});
    view.Wake();
    EXPECT_EQ(view.wake, ConnectionsModel::kPeriod);
    ASSERT_TRUE(RunUntilRows("bR"));
    EXPECT_EQ(model->EmptyText(), "There are no connections and no listening ports.");
    model->Read(ReadReason::RulesChanged);
    model->OnHidden();
    view.Wake();
    EXPECT_EQ(view.wake, std::nullopt);
    EXPECT_EQ(reads.Waiting(), 0U);
}

TEST_F(ConnectionsModelTest, RowsStayWhenTheDriverIsGone) {
    OpenGate();
    model->Read(ReadReason::Wished);
    ASSERT_TRUE(RunUntilRows("bR"));
    driver.isPresent = false;
    model->Read(ReadReason::Wished);
    ASSERT_TRUE(RunUntilRows("e"));
    EXPECT_TRUE(model->EmptyText().starts_with("The connections cannot be read"));
    EXPECT_EQ(model->RowCount(), 1);
    EXPECT_EQ(CountConnectionRows(driver), std::nullopt);
    driver.isPresent = true;
    SetConnections({Connection(1, 80, 4), Connection(1, 81, 4)});
    driver.answers[kControlReadListeners].resize(sizeof(ListenerEntry));
    EXPECT_EQ(CountConnectionRows(driver), 3U);
}

TEST_F(ConnectionsModelTest, ConnectionIsTheSameInEveryStateAndAListenerIsNot) {
    OpenGate();
    SetConnections({Connection(2, 81, 1), Connection(2, 81, 10), Connection(2, 80, 1), Connection(3, 81, 1)});
    ListenerEntry listener{kProtocolTcp, 0, SwapPort(81), 2};
    const auto bytes = RecordBytes(listener);
    driver.answers[kControlReadListeners].assign(bytes.begin(), bytes.end());
    model->Read(ReadReason::Wished);
    ASSERT_TRUE(RunUntilRows("bR"));
    ASSERT_EQ(model->RowCount(), 5);
    std::set<std::string> keys;
    for (int row = 0; row < 5; ++row) keys.insert(model->Key(row));
    EXPECT_EQ(keys.size(), 4U) << "two rows are one connection in two states";
    const std::vector<std::string> states = model->Columns().at(2).longest;
    EXPECT_EQ(states.size(), 15U);
    for (int row = 0; row < 5; ++row) {
        EXPECT_NE(std::find(states.begin(), states.end(), model->Cell(row, 2).text), states.end()) << row;
    }
}

TEST_F(ConnectionsModelTest, ServiceThatHangsHoldsUpTheNamesAndNotTheList) {
    // The first reading waits for the service; the second one is shown without it.
    model->Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "");
    model->Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bR");
    EXPECT_EQ(model->CellText(0, 0), "no process associated");
    // Once the service has answered, the newest tables have the name.
    SetConnections({Connection(7, 443, 4)});
    model->Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bR");
    OpenGate();
    ASSERT_TRUE(RunUntilRows("bR"));
    EXPECT_TRUE(view.Row(0).starts_with("a.exe\t0.0.0.0:443"));
    EXPECT_EQ(link.Service(), PeerState::Reachable);
}

TEST_F(ConnectionsModelTest, ServiceThatDoesNotAnswerIsAskedOncePerReading) {
    SetConnections({Connection(7, 1, 4), Connection(8, 1, 4), Connection(9, 1, 4)});
    connector->Pipe().outcome = PipeOutcome::TimedOut;
    OpenGate();
    model->Read(ReadReason::Wished);
    ASSERT_TRUE(RunUntilRows("bR"));
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
