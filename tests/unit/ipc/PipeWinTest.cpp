// The pipe connector against real named pipes, each served by a thread of the test.
#include "ipc/Pipe_win.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <future>
#include <string>

#include "base/Handles_win.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::RawBytes;

// Longer than anything takes that goes well; no test waits for it to pass.
constexpr auto kLong = std::chrono::milliseconds(60'000);
constexpr auto kShort = std::chrono::milliseconds(30);

RawBytes Numbered(std::size_t size) {
    RawBytes bytes(size);
    for (std::size_t i = 0; i < size; ++i) bytes[i] = static_cast<std::byte>(i * 7 + 1);
    return bytes;
}

// The first and only instance, in message mode, with an owner: this user, or the one that is given.
UniqueFile MakePipe(const std::string& name, PSID owner = nullptr) {
    SECURITY_DESCRIPTOR descriptor{};
    EXPECT_TRUE(::InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) &&
                ::SetSecurityDescriptorDacl(&descriptor, TRUE, nullptr, FALSE) &&
                ::SetSecurityDescriptorOwner(&descriptor, owner, FALSE));
    SECURITY_ATTRIBUTES attributes{
        .nLength = sizeof attributes, .lpSecurityDescriptor = &descriptor, .bInheritHandle = FALSE};
    return UniqueFile(::CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX,
                                         PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT, 1, 4096, 4096, 0,
                                         &attributes));
}

struct PipeWinTest : testing::Test {
    StopSignal stop;
    WinPipeConnector connector{stop};
    // A name of its own, also when several test processes run at once.
    std::string name = R"(\\.\pipe\BRENNVAR_TEST_)" + std::to_string(::GetCurrentProcessId());
    UniqueFile server = MakePipe(name);
    std::promise<void> release;  // lets the server go on
    RawBytes answer = RawBytes(8);
    std::size_t size = 99;

    // The server's side, on a thread of its own until the end of the test.
    [[nodiscard]] static std::future<void> Serve(std::function<void()> serve) {
        return std::async(std::launch::async, std::move(serve));
    }
    void Accept() const {
        if (::ConnectNamedPipe(server.Get(), nullptr)) return;
        const DWORD error = ::GetLastError();  // a client may have come, and even gone, before the call
        EXPECT_TRUE(error == ERROR_PIPE_CONNECTED || error == ERROR_NO_DATA) << error;
    }
    void AcceptQuestion() const {
        Accept();
        RawBytes bytes(64);
        DWORD got = 0;
        EXPECT_TRUE(::ReadFile(server.Get(), bytes.data(), 64, &got, nullptr));
        bytes.resize(got);
        EXPECT_EQ(bytes, Numbered(8));
    }
    void Disconnect() const {
        ::FlushFileBuffers(server.Get());  // waits until the client has read
        ::DisconnectNamedPipe(server.Get());
    }
    [[nodiscard]] std::unique_ptr<PipeConnection> Connect() {
        if (!connector.WaitForInstance(name, kLong)) return nullptr;
        OpenedPipe opened = connector.Open(name);
        EXPECT_TRUE(opened.connection && opened.connection->SetMessageMode());
        return std::move(opened.connection);
    }
};

TEST_F(PipeWinTest, AnswersComeWholeShortAndCut) {
    for (const auto& [sent, received] : {std::pair<std::size_t, std::size_t>{8, 8}, {3, 3}, {9, 8}, {4000, 8}}) {
        const auto serving = Serve([this, sent = sent] {
            AcceptQuestion();
            DWORD written = 0;
            EXPECT_TRUE(
                ::WriteFile(server.Get(), Numbered(sent).data(), static_cast<DWORD>(sent), &written, nullptr));
            Disconnect();
        });
        answer.assign(8, {});
        {
            const auto connection = Connect();
            ASSERT_TRUE(connection);
            EXPECT_EQ(connection->Transact(Numbered(8), answer, size, kLong), PipeOutcome::Done) << sent;
        }
        serving.wait();
        EXPECT_EQ(size, received) << sent;
        RawBytes expected = Numbered(received);
        expected.resize(8);
        EXPECT_EQ(answer, expected) << sent;
    }
}

TEST_F(PipeWinTest, BelievesTheSystemTheAdministratorsAndTheUserOnly) {
    // Windows lets only some of these be made, Wine all of them.
    for (const auto& [type, isBelieved] : {std::pair{WinLocalSystemSid, true},
                                           {WinBuiltinAdministratorsSid, true},
                                           {WinWorldSid, false},
                                           {WinBuiltinUsersSid, false},
                                           {WinLocalServiceSid, false},
                                           {WinAnonymousSid, false}}) {
        std::array<BYTE, SECURITY_MAX_SID_SIZE> owner{};
        DWORD ownerSize = owner.size();
        ASSERT_TRUE(::CreateWellKnownSid(type, nullptr, owner.data(), &ownerSize));
        server.Reset();
        server = MakePipe(name, owner.data());
        if (!server && ::GetLastError() == ERROR_INVALID_OWNER) continue;
        ASSERT_TRUE(server);
        const OpenedPipe opened = connector.Open(name);
        EXPECT_EQ(opened.connection != nullptr, isBelieved) << type;
        EXPECT_EQ(opened.isForeign, !isBelieved) << type;
    }
}

TEST_F(PipeWinTest, WaitsForABusyInstanceUntilItIsFreeOrTheProgramStops) {
    const auto serving = Serve([&] {
        Accept();
        release.get_future().wait();
        Disconnect();
        Accept();
    });
    auto first = Connect();
    ASSERT_TRUE(first);
    const OpenedPipe busy = connector.Open(name);
    EXPECT_TRUE(!busy.connection && !busy.isForeign);
    EXPECT_FALSE(connector.WaitForInstance(name, kShort));
    EXPECT_FALSE(connector.WaitForInstance(name, 0ms));
    first.reset();
    release.set_value();
    first = Connect();
    ASSERT_TRUE(first);
    auto waiting = Serve([&] { EXPECT_FALSE(connector.WaitForInstance(name, 10 * kLong)); });
    stop.Request();
    EXPECT_EQ(waiting.wait_for(kLong), std::future_status::ready);
}

TEST_F(PipeWinTest, CancelsWhatIsNotAnsweredOrReadInTime) {
    const auto serving = Serve([&] {
        AcceptQuestion();
        release.get_future().wait();
        Disconnect();
        Accept();
    });
    auto connection = Connect();
    ASSERT_TRUE(connection);
    EXPECT_EQ(connection->Transact(Numbered(8), answer, size, kShort), PipeOutcome::TimedOut);
    EXPECT_EQ(size, 99U);
    // The connection must not hand the late answer to the next question.
    EXPECT_EQ(connection->Transact(Numbered(8), answer, size, kShort), PipeOutcome::Failed);
    EXPECT_EQ(connection->Write(Numbered(8), kShort), PipeOutcome::Failed);
    release.set_value();
    connection = Connect();
    ASSERT_TRUE(connection);
    EXPECT_EQ(connection->Write(RawBytes(1'000'000), kShort), PipeOutcome::TimedOut);
}

TEST_F(PipeWinTest, StopOrTheServersDeathEndsATransaction) {
    for (const bool dies : {false, true}) {
        StopSignal stopNow;
        WinPipeConnector connecting{stopNow};
        const auto serving = Serve([&] {
            AcceptQuestion();
            dies ? server.Reset() : stopNow.Request();  // while the client waits for its answer
        });
        ASSERT_TRUE(connecting.WaitForInstance(name, kLong));
        const auto connection = connecting.Open(name).connection;
        ASSERT_TRUE(connection && connection->SetMessageMode());
        EXPECT_EQ(connection->Transact(Numbered(8), answer, size, 10 * kLong),
                  dies ? PipeOutcome::Failed : PipeOutcome::TimedOut);
        serving.wait();
        if (!dies) Disconnect();
    }
    EXPECT_FALSE(connector.WaitForInstance(name, kLong));
    EXPECT_EQ(connector.Open(name).connection, nullptr);
}

}  // namespace
}  // namespace brennvar
