#include "tools/StreamTransport_win.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>

#include "tools/NameLookup_win.h"

namespace brennvar {
namespace {

using std::chrono::milliseconds;

// Longer than any test runs: what ends before it was ended by something else.
constexpr milliseconds kHour{3'600'000};

std::span<const std::byte> BytesOf(std::string_view text) {
    return std::as_bytes(std::span(text));
}

class StreamTransportWinTest : public testing::Test {
protected:
    StopSignal stop;
    WinsockTransport transport{stop};
    UniqueSocket listener{::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP)};
    std::uint16_t port = 0;
    UniqueSocket accepted;
    Ipv4 loopback = 0;

    void SetUp() override {
        ASSERT_EQ(transport.Resolve("127.0.0.1", loopback), 0U);
        sockaddr_in here{};
        here.sin_family = AF_INET;
        here.sin_addr.s_addr = loopback;
        int size = sizeof here;
        ASSERT_EQ(::bind(listener.Get(), reinterpret_cast<sockaddr*>(&here), size), 0);
        ASSERT_EQ(::listen(listener.Get(), 1), 0);
        ASSERT_EQ(::getsockname(listener.Get(), reinterpret_cast<sockaddr*>(&here), &size), 0);
        port = SwapPort(here.sin_port);
    }
    void Connect() {
        ASSERT_EQ(transport.Connect(loopback, port, kHour), 0U);
        accepted.Reset(::accept(listener.Get(), nullptr, nullptr));
        ASSERT_TRUE(accepted);
    }
    StreamOutcome Receive(milliseconds limit) {
        const StreamOutcome outcome = transport.Receive(std::as_writable_bytes(std::span(buffer)), limit);
        return outcome;
    }

    char buffer[100]{};
};

TEST_F(StreamTransportWinTest, ReceivesNothingWithinTheLimit) {
    Connect();
    EXPECT_EQ(Receive(milliseconds(0)).error, kErrorTimedOut);
    EXPECT_EQ(Receive(milliseconds(30)).error, kErrorTimedOut);
    ASSERT_EQ(::send(accepted.Get(), "x", 1, 0), 1);
    while (Receive(milliseconds(0)).count == 0) std::this_thread::yield();
    EXPECT_EQ(buffer[0], 'x');
    // A byte that the peer calls urgent is not among those that are waited for, and ends no wait.
    ASSERT_EQ(::send(accepted.Get(), "u", 1, MSG_OOB), 1);
    EXPECT_EQ(Receive(milliseconds(30)).error, kErrorTimedOut);
}

TEST_F(StreamTransportWinTest, TellsThatNobodyListens) {
    listener.Reset();
    EXPECT_EQ(transport.Connect(loopback, port, kHour), kErrorRefused);
    EXPECT_NE(transport.Send(BytesOf("x"), kHour).error, 0U);
    EXPECT_NE(Receive(kHour).error, 0U);
}

TEST_F(StreamTransportWinTest, EndsAWaitForBytesAndOneForRoomWhenStopped) {
    Connect();
    {
        const std::jthread stopper([this] { stop.Request(); });
        EXPECT_EQ(Receive(kHour).error, kErrorCancelled);
    }
    EXPECT_EQ(transport.Send(BytesOf("x"), kHour).error, kErrorCancelled);
    EXPECT_EQ(transport.Connect(loopback, port, kHour), kErrorCancelled);
}

TEST_F(StreamTransportWinTest, WaitsForRoomNoLongerThanTheLimit) {
    Connect();
    const std::string much(1 << 20, 'x');
    StreamOutcome outcome;
    // The peer reads nothing: what the system takes has an end.
    while (outcome.error == 0) outcome = transport.Send(BytesOf(much), milliseconds(30));
    EXPECT_EQ(outcome.error, kErrorTimedOut);
}

TEST_F(StreamTransportWinTest, FindsNamesAndLeavesALookUpBehind) {
    Ipv4 address = 0;
    EXPECT_EQ(transport.Resolve("localhost", address), 0U);
    EXPECT_EQ(FormatIpv4(address).substr(0, 4), "127.");
    address = 7;
    EXPECT_EQ(transport.Resolve(std::string("localhost\0.example", 18), address), kErrorHostNotFound);
    EXPECT_EQ(transport.Resolve("", address), kErrorHostNotFound);
    EXPECT_NE(transport.Resolve(std::string(300, 'a'), address), 0U);
    stop.Request();
    EXPECT_EQ(LookUpHost("localhost", stop, kHour, address), kErrorCancelled);
    EXPECT_EQ(address, 7U);
}

}  // namespace
}  // namespace brennvar
