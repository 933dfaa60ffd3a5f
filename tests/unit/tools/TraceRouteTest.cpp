#include "tools/TraceRoute.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "support/FakeIcmp.h"
#include "support/HexBytes.h"

namespace brennvar {
namespace {

using test::FakeIcmp;
using test::FromHex;
using Bytes = FakeIcmp::Bytes;
using Lines = std::vector<std::string>;

// IP header (RFC 791): version 4, five words, from 10.0.0.x.
std::string HeaderFrom(std::string_view lastByte) {
    return "45 00 00 38  00 01 00 00  40 01 00 00  0A 00 00 " + std::string(lastByte) + "  0A 00 00 63 ";
}
// RFC 792. A router: time exceeded. The destination: an echo reply to identifier 0xABCD.
Bytes Exceeded(std::string_view from) {
    return FromHex(HeaderFrom(from) + "0B 00 00 00  00 00 00 00");
}
Bytes Answer(std::string_view from) {
    return FromHex(HeaderFrom(from) + "00 00 00 00  CD AB 00 00  EF BE AD DE");
}
Bytes ForeignAnswer() {
    return FromHex(HeaderFrom("05") + "00 00 00 00  CC AB 05 00");
}

class Printed final : public ToolOutput {
public:
    void Print(const std::string& line) override { lines.push_back(line); }
    Lines lines;
};

class TraceRouteTest : public testing::Test {
protected:
    TraceRouteTest() { m_network.hosts["target"] = ParseIpv4("10.0.0.9").value_or(0); }
    // The lines of a whole trace behind its first one.
    Lines Trace(const std::string& host = "target") {
        m_printed.lines.clear();
        m_tracer.TraceRoute(host);
        EXPECT_EQ(m_network.libraryUses, 0);
        EXPECT_EQ(m_network.openSockets, 0);
        if (m_printed.lines.empty()) return {"nothing"};
        EXPECT_EQ(m_printed.lines.front(), "Sending 32 bytes to " + host);
        return {m_printed.lines.begin() + 1, m_printed.lines.end()};
    }

    FakeIcmp m_network;
    const Language m_english{nullptr};
    Printed m_printed;
    StopSignal m_stop;
    RouteTracer m_tracer{m_network, m_english, m_printed, m_stop};
};

TEST_F(TraceRouteTest, PrintsALineForEachHopAndEndsWithTheDestination) {
    m_network.names = {{"10.0.0.1", "gateway"}, {"10.0.0.9", "target.example"}};
    m_network.script = {{.silence = 3, .datagram = Exceeded("01")},
                        {.silence = 12, .datagram = Exceeded("02")},
                        {.silence = 100, .datagram = Answer("09")},
                        {.datagram = Exceeded("0A")}};
    // All times are measured from the beginning.
    EXPECT_EQ(Trace(), (Lines{"IP: 10.0.0.1 [gateway] reached in: 3 ms.", "IP: 10.0.0.2 [-] reached in: 15 ms.",
                              "IP: 10.0.0.9 [target.example] reached in: 115 ms."}));
    EXPECT_EQ(m_network.script.size(), 1U);
    EXPECT_EQ(m_network.timesToLive, (std::vector<std::uint32_t>{1, 1, 2, 3}));  // the first with the socket
    EXPECT_EQ(m_network.receiveSizes, (std::vector<std::size_t>{1064, 1064, 1064}));
    // One request for all. Its sum in words of the machine: 0008 + ABCD + 6 * (BEEF + DEAD) = A5D7D; folded 5D87,
    // complemented A278.
    const Bytes request =
        FromHex("08 00 78 A2  CD AB 00 00  EFBEADDE EFBEADDE EFBEADDE EFBEADDE EFBEADDE EFBEADDE");
    ASSERT_EQ(m_network.requests.size(), 3U);
    for (const auto& [destination, bytes] : m_network.requests) {
        EXPECT_EQ(FormatIpv4(destination), "10.0.0.9");
        EXPECT_EQ(bytes, request);
    }
}

TEST_F(TraceRouteTest, BuildsARequestOfAnOddSize) {
    Bytes request(9);
    RouteTracer::BuildEchoRequest(request, 0, 1);
    EXPECT_EQ(request, FromHex("08 00 07 FF  00 00 01 00  EF"));  // 0008 + 0001 + 00EF = 00F8
}

TEST_F(TraceRouteTest, SkipsTheHopBehindASilentOneAndGivesUpAboveTen) {
    EXPECT_EQ(Trace(), Lines(6, "Request time out"));
    EXPECT_EQ(m_network.timesToLive, (std::vector<std::uint32_t>{1, 1, 3, 5, 7, 9, 11}));
    EXPECT_EQ(m_network.tick, 1000U + 6 * 2000U);

    m_network.script.assign(200, {.datagram = Exceeded("01")});
    EXPECT_EQ(Trace().size(), 100U) << "so many hops";

    // A time-out at ten ends the trace, one at nine does not.
    for (const std::size_t answers : {9U, 8U}) {
        m_network.timesToLive.clear();
        m_network.script.assign(answers, {.datagram = Exceeded("01")});
        m_network.script.push_back({.silence = 2000, .datagram = Answer("09")});
        EXPECT_EQ(Trace().size(), 10U);
        EXPECT_EQ(m_network.timesToLive.back(), answers == 9 ? 10U : 11U);
    }
}

TEST_F(TraceRouteTest, WaitsAnewAfterTheReplyToAnotherProcess) {
    m_network.script = {{.silence = 1999, .datagram = ForeignAnswer()},
                        {.silence = 1999, .datagram = ForeignAnswer()},
                        {.silence = 1999, .datagram = Answer("09")}};
    EXPECT_EQ(Trace(), Lines{"IP: 10.0.0.9 [-] reached in: 5997 ms."});
    EXPECT_EQ(m_network.requests.size(), 1U);
}

TEST_F(TraceRouteTest, EndsWithAMessageThatIsNeitherReplyNorTimeExceeded) {
    struct Row {
        std::string datagram;
        std::string expected;
    };
    const Row rows[] = {
        {HeaderFrom("01") + "03 01 00 00  00 00 00 00", "Destination unreachable"},
        {HeaderFrom("01") + "08 00 00 00  CD AB 00 00", "Unknown ICMP packet type 8 received"},
        // A header of 28 bytes leaves too little of 32; of the socket's address, not of the header's.
        {"47 00 00 38  00 01 00 00  40 01 00 00  0A 00 00 01  0A 00 00 63  00 00 00 00  00 00 00 00  0B 00 00 00",
         "Too few bytes from 10.9.9.9"},
    };
    for (const Row& row : rows) {
        m_network.script = {{.datagram = FromHex(row.datagram)}, {.datagram = Answer("09")}};
        EXPECT_EQ(Trace(), Lines{row.expected}) << row.datagram;
    }
    // 24 bytes leave enough.
    m_network.script = {{.datagram = FromHex("46 00 00 38  00 01 00 00  40 01 00 00  0A 00 00 09  0A 00 00 63  "
                                             "00 00 00 00  00 00 00 00  CD AB 00 00")}};
    EXPECT_EQ(Trace(), Lines{"IP: 10.0.0.9 [-] reached in: 0 ms."});
}

TEST_F(TraceRouteTest, LooksAtTheSequenceOfWhatTheBufferHoldsWhenAReceiveFails) {
    // The buffer begins empty: on to the next hop. What was cut is there, with sequence 5: a further wait.
    m_network.script = {{.waitFails = true, .receiveError = 10050},
                        {.receiveError = 10040, .datagram = ForeignAnswer()},
                        {.silence = 1999, .datagram = Answer("09")}};
    EXPECT_EQ(Trace(),
              (Lines{"Read failed: error 10050", "Read failed: buffer is too small", "Bad sequence number!",
                     "IP: 10.0.0.9 [-] reached in: 2049 ms."}));  // after a pause of 50
    EXPECT_EQ(m_network.timesToLive, (std::vector<std::uint32_t>{1, 1, 2}));
}

TEST_F(TraceRouteTest, SaysLessThanTenOnlyWhenTheTickCountHasWrapped) {
    m_network.tick = 0xFFFFFFF0;  // ordinary wrapping is no difference below zero
    m_network.script = {{.silence = 0x20, .datagram = Exceeded("01")},
                        {.datagram = Exceeded("02"), .clockStep = -0x20},
                        {.datagram = Answer("09"), .clockStep = -1}};
    EXPECT_EQ(Trace(), (Lines{"IP: 10.0.0.1 [-] reached in: 32 ms.", "IP: 10.0.0.2 [-] reached in: 0 ms.",
                              "IP: 10.0.0.9 [-] reached in: <10 ms."}));
}

TEST_F(TraceRouteTest, EndsWhenSendingFailsButNotWhenItIsShort) {
    m_network.sent = {.error = 0, .count = 20};
    m_network.script = {{.datagram = Answer("09")}};
    EXPECT_EQ(Trace(), (Lines{"Sent 20 bytes", "IP: 10.0.0.9 [-] reached in: 0 ms."}));
    m_network.sent = {.error = 10051, .count = 0};
    EXPECT_EQ(Trace(), Lines{"Send failed: 10051"});
    EXPECT_EQ(m_network.requests.size(), 2U);
    // A hop that cannot be set ends the trace as well, without a word.
    m_network.timesToLive.clear();
    m_network.timeToLiveErrors = {{1, 10022}};
    EXPECT_EQ(Trace(), Lines{});
    EXPECT_EQ(m_network.requests.size(), 2U);
}

TEST_F(TraceRouteTest, StopsSoonWhateverComes) {
    // A flood of replies to others, without a pause between them.
    m_network.script.assign(1000, {.datagram = ForeignAnswer()});
    m_network.onWait = [this] {
        if (m_network.script.size() == 500) m_stop.Request();
    };
    EXPECT_EQ(Trace(), Lines{});
    EXPECT_EQ(m_network.script.size(), 500U);
    EXPECT_LE(m_network.longestWait, std::chrono::milliseconds(50));
    // Before it has begun: nobody says that the name is wrong.
    EXPECT_EQ(Trace("nowhere"), Lines{});
}

}  // namespace
}  // namespace brennvar
