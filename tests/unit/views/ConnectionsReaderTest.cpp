#include "views/ConnectionsReader.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstring>
#include <future>
#include <thread>

#include "ipc/PipeRecords.h"
#include "support/FakeDevice.h"
#include "support/FakePipe.h"

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

class ConnectionsReaderTest : public testing::Test {
protected:
    std::promise<bool> gate;
    bool isGateOpen = false;
    GatedConnector* connector = nullptr;
    test::FakeDriver driver;
    TaskThread reads{[] {}};
    ServiceLink link{[] {},
                     [this](const StopSignal&) {
                         auto made = std::make_unique<GatedConnector>(gate.get_future().share());
                         connector = made.get();
                         return made;
                     }};
    ConnectionsReader reader{driver, reads, link, "none"};
    int answers = 0;
    ConnectionsReader::Reading last;

    // Whatever the test has come to: the link must not wait for ever.
    void TearDown() override {
        if (!isGateOpen) OpenGate();
    }
    void OpenGate() {
        isGateOpen = true;
        gate.set_value(true);
    }

    void SetUp() override {
        ConnectionEntry entry{};
        entry.state = 4;
        entry.processId = 7;
        const auto bytes = RecordBytes(entry);
        driver.answers[kControlReadConnections].assign(bytes.begin(), bytes.end());
        driver.answers[kControlReadListeners];
    }
    void Read() {
        reader.Read([this](ConnectionsReader::Reading reading) {
            ++answers;
            last = std::move(reading);
        });
    }
    // Lets the threads' completions run until the condition holds.
    template <class Condition>
    [[nodiscard]] bool RunUntil(Condition condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            reads.RunCompletions();
            link.RunCompletions();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return condition();
    }
};

TEST_F(ConnectionsReaderTest, ServiceThatHangsHoldsUpTheNamesAndNotTheList) {
    Read();
    // The first reading waits for the service; the second one is shown without it.
    ASSERT_TRUE(RunUntil([&] {
        if (answers == 0) Read();
        return answers > 0;
    }));
    ASSERT_TRUE(last && last->size() == 1);
    EXPECT_EQ(last->front().name, "none");
    // Once the service has answered, the next reading has the name.
    OpenGate();
    ASSERT_TRUE(RunUntil([&] {
        Read();
        return last && last->size() == 1 && last->front().name == "a.exe";
    }));
    EXPECT_EQ(link.Service(), PeerState::Reachable);
}

TEST_F(ConnectionsReaderTest, ServiceThatDoesNotAnswerIsAskedOncePerReading) {
    auto& table = driver.answers[kControlReadConnections];
    const auto one = table;
    for (std::uint8_t process = 8; process < 12; ++process) {
        table.insert(table.end(), one.begin(), one.end());
        table[table.size() - sizeof(ConnectionEntry) + offsetof(ConnectionEntry, processId)] = std::byte{process};
    }
    connector->Pipe().outcome = PipeOutcome::TimedOut;
    OpenGate();
    Read();
    ASSERT_TRUE(RunUntil([&] { return answers == 1; }));
    EXPECT_EQ(last->size(), 5U);
    EXPECT_EQ(connector->Pipe().requests.size(), 1U);
    driver.isPresent = false;
    Read();
    ASSERT_TRUE(RunUntil([&] { return answers == 2; }));
    EXPECT_EQ(last, std::nullopt);
}

}  // namespace
}  // namespace brennvar
