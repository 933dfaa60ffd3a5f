// The pipe connector against real named pipes, each served by a thread of the test.
#include "ipc/Pipe_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <future>
#include <thread>
#include <vector>

#include "base/Handles_win.h"
#include "base/SystemClock.h"
#include "ipc/CommandPipe.h"
#include "ipc/ServicePipes.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::RawBytes;

// Longer than anything takes that goes well; no test waits for it to pass.
constexpr auto kLong = std::chrono::milliseconds(60'000);
constexpr auto kShort = std::chrono::milliseconds(30);

// A name of its own for each test, also when several test processes run at once.
std::string NewPipeName() {
    static std::atomic<int> counter = 0;
    return R"(\\.\pipe\BRENNVAR_TEST_)" + std::to_string(::GetCurrentProcessId()) + "_" + std::to_string(++counter);
}

// The only instance of a pipe in message mode.
class Server {
public:
    explicit Server(std::string name, DWORD bufferSize = 4096) : m_name(std::move(name)) {
        m_pipe = UniqueFile(::CreateNamedPipeA(m_name.c_str(), PIPE_ACCESS_DUPLEX,
                                               PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, 1, bufferSize,
                                               bufferSize, 0, nullptr));
        EXPECT_TRUE(m_pipe);
    }

    [[nodiscard]] const std::string& Name() const { return m_name; }
    void Accept() {
        if (!::ConnectNamedPipe(m_pipe.Get(), nullptr)) {
            const DWORD error = ::GetLastError();  // a client may have come, and even gone, before the call
            EXPECT_TRUE(error == ERROR_PIPE_CONNECTED || error == ERROR_NO_DATA) << error;
        }
    }
    [[nodiscard]] RawBytes ReadMessage() {
        RawBytes bytes(8192);
        DWORD size = 0;
        EXPECT_TRUE(::ReadFile(m_pipe.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &size, nullptr));
        bytes.resize(size);
        return bytes;
    }
    void Send(const RawBytes& bytes) {
        DWORD size = 0;
        EXPECT_TRUE(::WriteFile(m_pipe.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &size, nullptr));
    }
    void Disconnect() {
        ::FlushFileBuffers(m_pipe.Get());  // waits until the client has read
        ::DisconnectNamedPipe(m_pipe.Get());
    }
    void Die() { m_pipe.Reset(); }

private:
    std::string m_name;
    UniqueFile m_pipe;
};

RawBytes Numbered(std::size_t size) {
    RawBytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::byte>(i * 7 + 1);
    return bytes;
}

struct PipeWinTest : testing::Test {
    StopSignal stop;
    WinPipeConnector connector{stop};
    Server server{NewPipeName()};

    // Runs on a thread of its own until the end of the test.
    [[nodiscard]] static std::future<void> Serve(std::function<void()> serve) {
        return std::async(std::launch::async, std::move(serve));
    }
    [[nodiscard]] std::unique_ptr<PipeConnection> Connect(bool messageMode = true) {
        if (!connector.WaitForInstance(server.Name(), kLong)) return nullptr;
        auto connection = connector.Open(server.Name());
        EXPECT_TRUE(connection && (!messageMode || connection->SetMessageMode()));
        return connection;
    }
};

TEST_F(PipeWinTest, WritesOneMessage) {
    RawBytes received;
    const auto serving = Serve([&] {
        server.Accept();
        received = server.ReadMessage();
        server.Disconnect();
    });
    const RawBytes sent = Numbered(5596);
    const auto connection = Connect(false);
    ASSERT_TRUE(connection);
    EXPECT_EQ(connection->Write(sent, kLong), PipeOutcome::Done);
    serving.wait();
    EXPECT_EQ(received, sent);
}

TEST_F(PipeWinTest, AnswersComeWholeShortAndCut) {
    struct Row {
        std::size_t sent, received;
    };
    for (const Row& row : {Row{64, 64}, Row{3, 3}, Row{65, 64}, Row{4000, 64}}) {
        const auto serving = Serve([&] {
            server.Accept();
            EXPECT_EQ(server.ReadMessage(), Numbered(100));
            server.Send(Numbered(row.sent));
            server.Disconnect();
        });
        RawBytes answer(64);
        std::size_t size = 0;
        {
            const auto connection = Connect();
            ASSERT_TRUE(connection);
            EXPECT_EQ(connection->Transact(Numbered(100), answer, size, kLong), PipeOutcome::Done) << row.sent;
        }
        serving.wait();
        EXPECT_EQ(size, row.received) << row.sent;
        RawBytes expected = Numbered(row.received);
        expected.resize(64);
        EXPECT_EQ(answer, expected) << row.sent;
    }
}

TEST_F(PipeWinTest, FindsNoInstanceOfAnAbsentPipe) {
    const std::string absent = NewPipeName();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(connector.WaitForInstance(absent, kLong));
    EXPECT_LT(std::chrono::steady_clock::now() - start, kLong);
    EXPECT_EQ(connector.Open(absent), nullptr);
}

TEST_F(PipeWinTest, WaitsForABusyInstanceUntilItIsFree) {
    std::promise<void> release;
    const auto serving = Serve([&] {
        server.Accept();
        release.get_future().wait();
        server.Disconnect();
        server.Accept();
    });
    auto first = Connect();
    ASSERT_TRUE(first);
    EXPECT_EQ(connector.Open(server.Name()), nullptr);
    EXPECT_FALSE(connector.WaitForInstance(server.Name(), kShort));
    EXPECT_FALSE(connector.WaitForInstance(server.Name(), 0ms));
    first.reset();
    release.set_value();
    EXPECT_TRUE(connector.WaitForInstance(server.Name(), kLong));
    EXPECT_TRUE(connector.Open(server.Name()));
    serving.wait();
}

TEST_F(PipeWinTest, StopEndsTheWaitForABusyInstance) {
    const auto serving = Serve([&] { server.Accept(); });
    const auto first = Connect();
    ASSERT_TRUE(first);
    auto waiting = Serve([&] { EXPECT_FALSE(connector.WaitForInstance(server.Name(), 10 * kLong)); });
    stop.Request();
    EXPECT_EQ(waiting.wait_for(kLong), std::future_status::ready);
    serving.wait();
}

TEST_F(PipeWinTest, CancelsATransactionThatIsNotAnsweredInTime) {
    std::promise<void> cancelled;
    const auto serving = Serve([&] {
        server.Accept();
        EXPECT_EQ(server.ReadMessage(), Numbered(8));
        cancelled.get_future().wait();
    });
    const auto connection = Connect();
    ASSERT_TRUE(connection);
    RawBytes answer(8);
    std::size_t size = 99;
    EXPECT_EQ(connection->Transact(Numbered(8), answer, size, kShort), PipeOutcome::TimedOut);
    EXPECT_EQ(size, 99U);
    // The connection must not hand the late answer to the next question.
    EXPECT_EQ(connection->Transact(Numbered(8), answer, size, kShort), PipeOutcome::Failed);
    EXPECT_EQ(connection->Write(Numbered(8), kShort), PipeOutcome::Failed);
    cancelled.set_value();
    serving.wait();
}

TEST_F(PipeWinTest, StopCutsATransactionShort) {
    std::promise<void> ended;
    const auto serving = Serve([&] {
        server.Accept();
        EXPECT_EQ(server.ReadMessage(), Numbered(8));
        stop.Request();  // while the client waits for its answer
        ended.get_future().wait();
    });
    const auto connection = Connect();
    ASSERT_TRUE(connection);
    RawBytes answer(8);
    std::size_t size = 0;
    EXPECT_EQ(connection->Transact(Numbered(8), answer, size, 10 * kLong), PipeOutcome::TimedOut);
    ended.set_value();
    serving.wait();
}

TEST_F(PipeWinTest, CancelsAWriteThatNobodyReads) {
    Server small(NewPipeName(), 256);
    std::promise<void> ended;
    const auto serving = Serve([&] {
        small.Accept();
        ended.get_future().wait();
    });
    ASSERT_TRUE(connector.WaitForInstance(small.Name(), kLong));
    const auto connection = connector.Open(small.Name());
    ASSERT_TRUE(connection);
    const RawBytes large(70'000);
    EXPECT_EQ(connection->Write(large, kShort), PipeOutcome::TimedOut);
    ended.set_value();
    serving.wait();
}

TEST_F(PipeWinTest, FailsWhenTheServerDiesInMidTransaction) {
    const auto serving = Serve([&] {
        server.Accept();
        EXPECT_EQ(server.ReadMessage(), Numbered(8));
        server.Die();
    });
    const auto connection = Connect();
    ASSERT_TRUE(connection);
    RawBytes answer(8);
    std::size_t size = 0;
    EXPECT_EQ(connection->Transact(Numbered(8), answer, size, kLong), PipeOutcome::Failed);
    serving.wait();
    EXPECT_FALSE(connector.WaitForInstance(server.Name(), kLong));
}

// The transports over real pipes: several calls one after another through the only instance, as the service has it.
TEST_F(PipeWinTest, TransportsWorkOverRealPipes) {
    constexpr int kCalls = 20;
    SystemClock clock(stop);
    ServicePipes service(connector, clock, {.attempts = 1000, .wait = 100ms, .pause = 1ms, .pendingLimit = kLong});
    CommandPipe commands(connector, clock, {.attempts = 1000, .wait = 100ms, .pause = 1ms, .pendingLimit = kLong});
    std::vector<RawBytes> received;
    const auto serving = Serve([&] {
        for (int i = 0; i < kCalls; ++i) {
            server.Accept();
            received.push_back(server.ReadMessage());
            server.Send(test::ZerosWith(4, {{0, "pong"}}));
            server.Disconnect();
            server.Accept();
            received.push_back(server.ReadMessage());
            server.Disconnect();
        }
    });
    const RawBytes ping = test::ZerosWith(4, {{0, "ping"}});
    for (int i = 0; i < kCalls; ++i) {
        RawBytes answer(4);
        EXPECT_TRUE(service.PipeTransact(server.Name(), ping, answer));
        EXPECT_EQ(answer, test::ZerosWith(4, {{0, "pong"}}));
        commands.CommandPipeSend(server.Name(), Numbered(5596));
    }
    serving.wait();
    ASSERT_EQ(received.size(), std::size_t{2 * kCalls});
    for (std::size_t i = 0; i < received.size(); ++i) {
        EXPECT_EQ(received[i], i % 2 == 0 ? ping : Numbered(5596)) << i;
    }
}

}  // namespace
}  // namespace brennvar
