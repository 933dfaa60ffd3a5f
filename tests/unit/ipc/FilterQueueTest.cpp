#include "ipc/FilterQueue.h"

#include <gtest/gtest.h>

#include "ipc/PipeWriteOnce.h"
#include "support/FakeClock.h"
#include "support/FakePipe.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;
using test::FakePipe;
using test::RawBytes;
using test::ZerosWith;

constexpr char kPipe[] = R"(\\.\pipe\BRENNVAR_IPC_QUEUE_SRV)";

struct FilterQueueTest : testing::Test {
    FakePipe pipe;
    test::FakeClock clock;
    FilterQueue queue{pipe, clock};
};

TEST_F(FilterQueueTest, WritesEntriesAndThePortWithoutAnAnswer) {
    queue.FILTER_PUT_ENTRY(0x01020304, "site", 0x05060708);
    queue.FILTER_SET_PROXY_PORT(8080);
    ASSERT_EQ(pipe.writes.size(), 2U);
    EXPECT_EQ(pipe.writes[0].bytes,
              ZerosWith(6168, {{0, "\1"}, {12, "site"}, {5132, "\x08\7\6\5"}, {6160, "\4\3\2\1"}}));
    EXPECT_EQ(pipe.writes[1].bytes, ZerosWith(6168, {{0, "\2"}, {6160, "\x90\x1F"}}));
    EXPECT_EQ(pipe.writes[1].pipe, kPipe);
    EXPECT_EQ(pipe.writes[1].pendingLimit, 600ms);
    EXPECT_TRUE(pipe.requests.empty());
}

TEST_F(FilterQueueTest, AsksInOneTransactionOfAtMostAMinute) {
    const std::string text(2000, 'x');
    queue.FILTER_ADD_ENTRY(text);
    queue.FILTER_DELETE_ENTRY(0x01020304);
    ASSERT_EQ(pipe.requests.size(), 2U);
    EXPECT_EQ(pipe.requests[0].bytes, ZerosWith(6168, {{0, "\4"}, {12, std::string_view(text).substr(0, 1023)}}));
    EXPECT_EQ(pipe.requests[1].bytes, ZerosWith(6168, {{0, "\5"}, {5132, "\4\3\2\1"}}));
    EXPECT_EQ(pipe.requests[1].pipe, kPipe);
    EXPECT_EQ(pipe.requests[1].pendingLimit, 60'000ms);
    EXPECT_TRUE(pipe.writes.empty());
    EXPECT_EQ(pipe.openCount, 0);
}

TEST_F(FilterQueueTest, QueryYieldsOneOrTwoFromAValidAnswerOnly) {
    struct Row {
        const char* what;
        RawBytes answer;
        std::uint32_t expected;
    };
    const Row rows[] = {
        {"valid 1", ZerosWith(6168, {{0, "\x64"}, {8, "\1"}}), 1},
        {"valid 2", ZerosWith(6168, {{0, "\x64"}, {8, "\2"}}), 2},
        {"valid 0", ZerosWith(6168, {{0, "\x64"}}), 0},
        {"valid 3", ZerosWith(6168, {{0, "\x64"}, {8, "\3"}}), 0},
        {"code 99", ZerosWith(6168, {{0, "\x63"}, {8, "\1"}}), 0},
        {"one byte short", ZerosWith(6167, {{0, "\x64"}, {8, "\1"}}), 0},
        {"nothing", {}, 0},
    };
    for (const Row& row : rows) {
        pipe.server = [&](const FakePipe::Message&) { return row.answer; };
        EXPECT_EQ(queue.FILTER_QUERY("site"), row.expected) << row.what;
        EXPECT_EQ(pipe.requests.back().bytes, ZerosWith(6168, {{0, "\3"}, {12, "site"}}));
    }
    pipe.server = [&](const FakePipe::Message&) { return rows[0].answer; };
    pipe.outcome = PipeOutcome::TimedOut;
    EXPECT_EQ(queue.FILTER_QUERY("site"), 0U);
}

TEST_F(FilterQueueTest, WaitsOnceAndNoMore) {
    pipe.failingWaits = FakePipe::kAlways;
    queue.FILTER_SET_PROXY_PORT(1);
    queue.FILTER_DELETE_ENTRY(1);
    EXPECT_FALSE(PipeWriteOnce(pipe, clock, "confirm", RawBytes(4)));
    ASSERT_EQ(pipe.waits.size(), 3U);
    for (const auto& wait : pipe.waits) EXPECT_EQ(wait.limit, 20'000ms) << wait.pipe;
    EXPECT_TRUE(clock.sleeps.empty());
    EXPECT_TRUE(pipe.opened.empty());
}

TEST_F(FilterQueueTest, WriteOnceTellsWhetherTheBytesWereWritten) {
    const RawBytes bytes = ZerosWith(4, {{0, "abcd"}});
    EXPECT_TRUE(PipeWriteOnce(pipe, clock, "confirm", bytes));
    ASSERT_EQ(pipe.writes.size(), 1U);
    EXPECT_EQ(pipe.writes[0].pipe, "confirm");
    EXPECT_EQ(pipe.writes[0].bytes, bytes);
    EXPECT_EQ(pipe.writes[0].pendingLimit, 600ms);
    pipe.outcome = PipeOutcome::TimedOut;
    EXPECT_FALSE(PipeWriteOnce(pipe, clock, "confirm", bytes));
    pipe.canOpen = false;
    EXPECT_FALSE(PipeWriteOnce(pipe, clock, "confirm", bytes));
    EXPECT_EQ(pipe.writes.size(), 2U);
    EXPECT_EQ(pipe.openCount, 0);
}

}  // namespace
}  // namespace brennvar
