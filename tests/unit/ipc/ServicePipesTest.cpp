#include "ipc/ServicePipes.h"

#include <gtest/gtest.h>

#include "ipc/FilterQueue.h"
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

struct ServicePipesTest : testing::Test {
    FakePipe pipe;
    test::FakeClock clock;
    ServicePipes service{pipe, clock};

    void Answer(RawBytes answer) {
        pipe.server = [answer = std::move(answer)](const FakePipe::Message&) { return answer; };
    }
};

TEST_F(ServicePipesTest, AsksForPathsAndTrayTextsByteForByte) {
    Answer(ZerosWith(520, {{0, "\2"}, {4, "\xFF\xFF\xFF\xFF"}, {8, R"(C:\Tools\a.exe)"}}));
    EXPECT_EQ(service.ResolveProcessPath(0x01020304), R"(C:\Tools\a.exe)");
    Answer(ZerosWith(4100, {{0, "\2"}, {4, "REFRESH"}}));
    EXPECT_EQ(service.FetchTrayText(), "REFRESH");
    ASSERT_EQ(pipe.requests.size(), 2U);
    EXPECT_EQ(pipe.requests[0].pipe, R"(\\.\pipe\BRENNVAR_PID_RESOLVE)");
    EXPECT_EQ(pipe.requests[0].bytes, ZerosWith(520, {{0, "\1"}, {4, "\4\3\2\1"}}));
    EXPECT_EQ(pipe.requests[0].pendingLimit, 600ms);
    EXPECT_EQ(pipe.requests[1].pipe, R"(\\.\pipe\BRENNVAR_IPC_TRAY)");
    EXPECT_EQ(pipe.requests[1].bytes, ZerosWith(4100, {{0, "\1"}}));
    EXPECT_EQ(pipe.openCount, 0);
}

TEST_F(ServicePipesTest, TakesOnlyWholeAnswersWithStatusTwo) {
    const std::string text(4096, 'x');  // texts that the peer did not end
    const std::pair<RawBytes, std::optional<std::string>> rows[] = {
        {ZerosWith(520, {{0, "\2"}}), ""},
        {ZerosWith(600, {{0, "\2"}, {8, "p"}}), "p"},
        {ZerosWith(520, {{0, "\2"}, {8, {text.data(), 512}}}), text.substr(0, 259)},
        {ZerosWith(520, {{0, "\1"}, {8, "p"}}), std::nullopt},
        {ZerosWith(520, {{0, "\2\1"}, {8, "p"}}), std::nullopt},
        {ZerosWith(519, {{0, "\2"}, {8, "p"}}), std::nullopt},
        {{}, std::nullopt}};
    for (const auto& [given, expected] : rows) {
        Answer(given);
        EXPECT_EQ(service.ResolveProcessPath(1), expected) << given.size();
    }
    Answer(ZerosWith(4099, {{0, "\2"}, {4, "ATTACK"}}));
    EXPECT_EQ(service.FetchTrayText(), std::nullopt);
    Answer(ZerosWith(4100, {{0, "\2"}, {4, text}}));
    EXPECT_EQ(service.FetchTrayText(), text.substr(0, 4095));
    // A failure is no answer, and what the peer left there is cleared.
    RawBytes answer(8, std::byte{0xDD});
    for (const PipeOutcome outcome : {PipeOutcome::TimedOut, PipeOutcome::Failed}) {
        pipe.outcome = outcome;
        EXPECT_EQ(service.FetchTrayText(), std::nullopt);
        EXPECT_FALSE(service.PipeTransact("pipe", RawBytes(4), answer));
        EXPECT_EQ(answer, RawBytes(8));
        EXPECT_EQ(service.LastCallMetService(), outcome == PipeOutcome::Failed);  // a slow one is as good as none
    }
    pipe.outcome = PipeOutcome::Done;
    pipe.canSetMessageMode = false;
    EXPECT_EQ(service.FetchTrayText(), std::nullopt);
    pipe.canOpen = false;
    EXPECT_EQ(service.FetchTrayText(), std::nullopt);
    EXPECT_TRUE(service.LastCallMetService());
    EXPECT_EQ(pipe.openCount, 0);
}

TEST_F(ServicePipesTest, WaitsThirtyTimesAndThenKnowsThatTheServiceIsMissing) {
    pipe.failingWaits = FakePipe::kAlways;
    EXPECT_EQ(service.FetchTrayText(), std::nullopt);
    EXPECT_FALSE(service.LastCallMetService());
    EXPECT_EQ(pipe.waits, std::vector<std::chrono::milliseconds>(30, 10'000ms));
    EXPECT_EQ(clock.sleeps, std::vector<std::chrono::milliseconds>(29, 200ms));
    pipe.failingWaits = 0;
    (void)service.FetchTrayText();
    EXPECT_TRUE(service.LastCallMetService());
}

struct FilterQueueTest : ServicePipesTest {
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
    for (const Row& row : {Row{6168, "\x64", "\1", 1},
                           {6168, "\x64", "\2", 2},
                           {6168, "\x64", "", 0},
                           {6168, "\x64", "\3", 0},
                           {6168, "\x63", "\1", 0},
                           {6167, "\x64", "\1", 0}}) {
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
