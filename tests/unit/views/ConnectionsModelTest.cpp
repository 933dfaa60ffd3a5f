#include "views/ConnectionsModel.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <set>
#include <thread>

#include "config/ResourceIds.h"
#include "ipc/PipeRecords.h"
#include "support/CommanderRig.h"
#include "support/ConnectionEntries.h"
#include "support/DataFolder.h"
#include "support/FakeClock.h"
#include "support/FakeDevice.h"
#include "support/FakeListView.h"
#include "support/FakePipe.h"
#include "support/FakeProgramFiles.h"
#include "support/FakeTaskQueue.h"
#include "support/FakeUserValues.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using namespace std::string_view_literals;
using test::Listener;
using Column = ConnectionColumn;

// The service's answer: the path of a process, or none.
test::FakePipe::Bytes PathAnswer(const std::string& path) {
    PidResolveAnswer answer{};
    answer.status = kServiceAnswerValid;
    PutText(answer.path, path);
    const auto bytes = RecordBytes(answer);
    return {bytes.begin(), bytes.end()};
}

// A service that lets each wait for its pipe hang until the gate is opened.
class GatedConnector final : public PipeConnector {
public:
    explicit GatedConnector(std::shared_future<bool> gate) : m_gate(std::move(gate)) {
        m_pipe.server = [](const test::FakePipe::Message& request) {
            const auto asked = DecodeRecord<PidResolveRequest>(request.bytes);
            if (asked->processId == 0) return PathAnswer("");
            return PathAnswer("C:\\Tools\\" + std::string(1, static_cast<char>('A' + asked->processId % 26)) +
                              ".exe");
        };
    }
    bool WaitForInstance(const std::string&, std::chrono::milliseconds) override { return m_gate.get(); }
    std::unique_ptr<PipeConnection> Open(const std::string& name) override { return m_pipe.Open(name); }

    test::FakePipe& Pipe() { return m_pipe; }  // before the gate is opened, or after the last answer

private:
    std::shared_future<bool> m_gate;
    test::FakePipe m_pipe;
};

struct FakeOptions final : OptionSource {
    std::optional<StoredOptions> stored = StoredOptions{};
    [[nodiscard]] std::optional<StoredOptions> Read() const override { return stored; }
    [[nodiscard]] FileStamp Stamp() const override { return {}; }
};

class ConnectionsModelTest : public testing::Test {
protected:
    std::promise<bool> gate;
    bool isGateOpen = false;
    GatedConnector* connector = nullptr;
    test::FakeDriver driver;
    test::FakeTaskQueue reads;
    test::FakeTaskQueue programQueue;
    test::FakeProgramFiles files;
    test::FakeClock clock;
    test::FakeUserValues userValues;
    test::CommanderRig rig;
    FakeOptions options;
    test::DataFolder data;
    StopSignal stop;
    LogLookups lookups{data.Path(), stop};
    ServiceLink link{[] {},
                     [this](const StopSignal&) {
                         auto made = std::make_unique<GatedConnector>(gate.get_future().share());
                         connector = made.get();
                         return made;
                     }};
    Language language{nullptr};
    BlockedAddresses blocked;
    std::unique_ptr<ConnectionsModel> model = MakeModel();
    test::FakeListView view{*model};

    [[nodiscard]] std::unique_ptr<ConnectionsModel> MakeModel() {
        return std::make_unique<ConnectionsModel>(ConnectionsModel::Parts{.language = language,
                                                                          .devices = driver,
                                                                          .reads = reads,
                                                                          .clock = clock,
                                                                          .link = link,
                                                                          .programQueue = programQueue,
                                                                          .programFiles = files,
                                                                          .commander = rig.commander,
                                                                          .options = options,
                                                                          .userValues = userValues,
                                                                          .lookups = lookups,
                                                                          .blocked = blocked});
    }
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
        SetConnections({Connection(26, 80, 4)});
    }
    // Of the program "a" when the identifier is a multiple of 26, and so on.
    static ConnectionEntry Connection(std::uint32_t processId, std::uint16_t localPort, std::uint32_t state,
                                      std::uint32_t in = 0) {
        return test::Connection(
            {.state = state, .localPort = localPort, .processId = processId, .in = in, .out = 0});
    }
    template <class Entry>
    void SetTable(std::uint32_t code, const std::vector<Entry>& entries) {
        const auto bytes = std::as_bytes(std::span(entries));
        driver.answers[code].assign(bytes.begin(), bytes.end());
    }
    void SetConnections(const std::vector<ConnectionEntry>& entries) { SetTable(kControlReadConnections, entries); }
    void SetListeners(const std::vector<ListenerEntry>& entries) { SetTable(kControlReadListeners, entries); }
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
    [[nodiscard]] bool RunUntilRows(const std::string& wanted = "bRs") {
        std::string changes;
        return RunUntil([&] { return (changes += view.TakeChanges()) == wanted; });
    }
    // A reading, two seconds after the last one.
    [[nodiscard]] bool ReadRows(ReadReason reason = ReadReason::Wished) {
        clock.Pass(2s);
        if (!isGateOpen) OpenGate();
        model->Read(reason);
        return RunUntilRows();
    }
    [[nodiscard]] std::string Text(int row, Column column) const {
        return model->Cell(row, static_cast<int>(column)).text;
    }
    // The column of all rows; rows below a program stand in brackets.
    [[nodiscard]] std::string Texts(Column column) const {
        std::string texts;
        for (int row = 0; row < model->RowCount(); ++row) {
            const bool isMember = model->Shape(row).level == 1;
            texts += (isMember ? "(" : "") + Text(row, column) + (isMember ? ") " : " ");
        }
        return texts;
    }
    [[nodiscard]] std::string Tip(int row, Column column) const {
        return model->CellTip(row, static_cast<int>(column));
    }
    void Do(int action, int row) { model->Do(action, {&row, 1}); }
    [[nodiscard]] std::string Offered(int row) const {
        std::string offered;
        for (const ListAction& action : model->Actions()) offered += model->CanDo(action.id, row) ? '1' : '0';
        return offered;
    }
};

TEST_F(ConnectionsModelTest, IsReadWhenShownAndThenInItsPeriodUntilHidden) {
    OpenGate();
    EXPECT_TRUE(model->EmptyText().starts_with("Reading the connections."));
    EXPECT_EQ(model->Summary(), std::nullopt);
    EXPECT_EQ(model->RowCount(), 0);
    SetConnections({Connection(26, 80, 4, 655'360)});
    model->Read(ReadReason::Shown);
    EXPECT_EQ(view.wake, ConnectionsModel::kPeriod);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(view.Row(0),
              "a.exe\t10.0.0.1:80 -> 93.184.216.34:443\tESTAB-OUT\t\t\t640 KB\t0 B\t>0:00\tc:\\tools\\a.exe\t26");
    EXPECT_EQ(Tip(0, Column::Received), "655360 bytes");
    EXPECT_EQ(Tip(0, Column::Process), "c:\\tools\\a.exe");
    EXPECT_EQ(Tip(0, Column::State), "Established, opened by this computer.");
    EXPECT_EQ(model->Summary(), "Connections: 1, programs: 1, listening: 0");
    SetConnections({Connection(26, 80, 4, 655'360 + 4096), Connection(27, 81, 7)});
    SetListeners({Listener(6)});
    clock.Pass(2s);
    view.Wake();
    EXPECT_EQ(view.wake, ConnectionsModel::kPeriod);
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(Texts(Column::RateIn), "2.0 KB/s   ");
    EXPECT_EQ(Texts(Column::Sent), "0 B 0 B  ") << "a listener has no bytes";
    EXPECT_EQ(model->Mark(1), RowMark::New);
    EXPECT_EQ(model->Summary(), "Connections: 2, programs: 2, listening: 1; most: a.exe 2.0 KB/s");
    const CellGlyph glyphs[] = {CellGlyph::Filled, CellGlyph::Hollow, CellGlyph::Bar};
    for (int row = 0; row < 3; ++row) EXPECT_EQ(model->Cell(row, 2).glyph, glyphs[row]) << row;
    SetConnections({});
    SetListeners({});
    view.Wake();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->Mark(2), RowMark::Gone);
    EXPECT_EQ(model->Cell(2, 0).tone, Tone::Muted);
    view.Wake();
    ASSERT_TRUE(RunUntilRows());
    EXPECT_EQ(model->EmptyText(), "There are no connections and no listening ports.");
    model->Read(ReadReason::RulesChanged);
    model->OnHidden();
    view.Wake();
    EXPECT_EQ(view.wake, std::nullopt);
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
    EXPECT_EQ(CountConnections(driver), std::nullopt);
    driver.isPresent = true;
    SetConnections({Connection(1, 80, 4), Connection(1, 81, 4)});
    driver.answers[kControlReadListeners].resize(2 * sizeof(ListenerEntry) - 1);
    EXPECT_EQ(CountConnections(driver), (ConnectionCounts{2, 1}));
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
    EXPECT_EQ(model->EmptyText(), "Nothing here holds the text that you are looking for.");
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

TEST_F(ConnectionsModelTest, OffersWhatCanBeDoneWithARow) {
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

TEST_F(ConnectionsModelTest, BlocksTheOtherSideForTheTimeOfTheOption) {
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

TEST_F(ConnectionsModelTest, TerminatesTheProgramThatTheUserWasAskedAbout) {
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

TEST_F(ConnectionsModelTest, PathsAndNamesWithLineBreaksStayOneLine) {
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

TEST_F(ConnectionsModelTest, DetailsComeAtOnceAndWhatTheLogsKnowLater) {
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
