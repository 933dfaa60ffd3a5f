#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>

#include "ipc/PipeRecords.h"
#include "support/CommanderRig.h"
#include "support/ConnectionEntries.h"
#include "support/DataFolder.h"
#include "support/FakeClock.h"
#include "support/FakeDevice.h"
#include "support/FakeListView.h"
#include "support/FakeOptions.h"
#include "support/FakePipe.h"
#include "support/FakeProgramFiles.h"
#include "support/FakeTaskQueue.h"
#include "support/FakeUserValues.h"
#include "views/ConnectionsModel.h"

namespace brennvar::test {

// The service's answer: the path of a process, or none.
inline FakePipe::Bytes PathAnswer(const std::string& path) {
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
        m_pipe.server = [](const FakePipe::Message& request) {
            const auto asked = DecodeRecord<PidResolveRequest>(request.bytes);
            if (asked->processId == 0) return PathAnswer("");
            return PathAnswer("C:\\Tools\\" + std::string(1, static_cast<char>('A' + asked->processId % 26)) +
                              ".exe");
        };
    }
    bool WaitForInstance(const std::string& name, std::chrono::milliseconds) override {
        return m_gate.get() && name != missing;
    }
    OpenedPipe Open(const std::string& name) override { return m_pipe.Open(name); }

    std::string missing;                 // the name of a pipe that is not there
    FakePipe& Pipe() { return m_pipe; }  // before the gate is opened, or after the last answer

private:
    std::shared_future<bool> m_gate;
    FakePipe m_pipe;
};

// A page of connections whose driver, service and clock a test sets by hand.
class ConnectionsRig : public testing::Test {
protected:
    using Column = ConnectionColumn;

    std::promise<bool> gate;
    bool isGateOpen = false;
    GatedConnector* connector = nullptr;
    FakeDriver driver;
    FakeTaskQueue reads;
    FakeTaskQueue programQueue;
    FakeProgramFiles files;
    FakeClock clock;
    FakeUserValues userValues;
    CommanderRig rig;
    FakeOptions options;
    DataFolder data;
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
    ConnectionTables tables{driver, reads, clock};
    std::unique_ptr<ConnectionsModel> model = MakeModel();
    FakeListView view{*model};

    [[nodiscard]] std::unique_ptr<ConnectionsModel> MakeModel() {
        return std::make_unique<ConnectionsModel>(ConnectionsModel::Parts{.language = language,
                                                                          .tables = tables,
                                                                          .reads = reads,
                                                                          .driverReads = reads,
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
        clock.Pass(std::chrono::seconds(2));
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
    void Do(int action, int row) { model->Do(action, {&row, 1}); }
    [[nodiscard]] std::string Offered(int row) const {
        std::string offered;
        for (const ListAction& action : model->Actions()) offered += model->CanDo(action.id, row) ? '1' : '0';
        return offered;
    }
};

}  // namespace brennvar::test
