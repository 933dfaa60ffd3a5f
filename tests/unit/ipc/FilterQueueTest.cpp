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

struct FilterQueueTest : testing::Test {
    FakePipe pipe;
    test::FakeClock clock;
    FilterQueue queue{pipe, clock};
};

TEST_F(FilterQueueTest, SendsItsRecordsByteForByte) {
    const std::string text(2000, 'x');
    queue.FILTER_PUT_ENTRY(0x01020304, "site", 0x05060708);
    queue.FILTER_SET_PROXY_PORT(8080);
    queue.FILTER_ADD_ENTRY(text);
    queue.FILTER_DELETE_ENTRY(0x01020304);
    ASSERT_EQ(pipe.writes.size(), 2U);
    EXPECT_EQ(pipe.writes[0].bytes,
              ZerosWith(6168, {{0, "\1"}, {12, "site"}, {5132, "\x08\7\6\5"}, {6160, "\4\3\2\1"}}));
    EXPECT_EQ(pipe.writes[1].bytes, ZerosWith(6168, {{0, "\2"}, {6160, "\x90\x1F"}}));
    EXPECT_EQ(pipe.writes[1].pipe, R"(\\.\pipe\BRENNVAR_IPC_QUEUE_SRV)");
    EXPECT_EQ(pipe.writes[1].pendingLimit, 600ms);
    ASSERT_EQ(pipe.requests.size(), 2U);  // with an answer, within a minute
    EXPECT_EQ(pipe.requests[0].bytes, ZerosWith(6168, {{0, "\4"}, {12, {text.data(), 1023}}}));
    EXPECT_EQ(pipe.requests[1].bytes, ZerosWith(6168, {{0, "\5"}, {5132, "\4\3\2\1"}}));
    EXPECT_EQ(pipe.requests[1].pendingLimit, 60'000ms);
}

TEST_F(FilterQueueTest, QueryYieldsOneOrTwoFromAValidAnswerOnly) {
    struct Row {
        std::size_t size;
        const char *code, *value;
        std::uint32_t expected;
    };
    for (const Row& row : {Row{6168, "\x64", "\1", 1}, Row{6168, "\x64", "\2", 2}, Row{6168, "\x64", "", 0},
                           Row{6168, "\x64", "\3", 0}, Row{6168, "\x63", "\1", 0}, Row{6167, "\x64", "\1", 0}}) {
        pipe.server = [&](const auto&) { return ZerosWith(row.size, {{0, row.code}, {8, row.value}}); };
        EXPECT_EQ(queue.FILTER_QUERY("site"), row.expected) << row.size << int{row.value[0]};
        EXPECT_EQ(pipe.requests.back().bytes, ZerosWith(6168, {{0, "\3"}, {12, "site"}}));
    }
}

TEST_F(FilterQueueTest, WaitsOnceAndTellsWhetherAnAnswerWasWritten) {
    EXPECT_TRUE(PipeWriteOnce(pipe, clock, "confirm", RawBytes(4)));
    pipe.outcome = PipeOutcome::TimedOut;
    EXPECT_FALSE(PipeWriteOnce(pipe, clock, "confirm", RawBytes(4)));
    pipe.failingWaits = FakePipe::kAlways;
    EXPECT_FALSE(PipeWriteOnce(pipe, clock, "confirm", RawBytes(4)));
    queue.FILTER_SET_PROXY_PORT(1);
    queue.FILTER_DELETE_ENTRY(1);
    EXPECT_EQ(pipe.waits, std::vector<std::chrono::milliseconds>(5, 20'000ms));
    EXPECT_TRUE(clock.sleeps.empty());
}

}  // namespace
}  // namespace brennvar
