#include "ipc/ServicePipes.h"

#include <gtest/gtest.h>

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

TEST_F(ServicePipesTest, AsksForAProcessPathInMessageMode) {
    Answer(ZerosWith(520, {{0, "\2"}, {4, "\xFF\xFF\xFF\xFF"}, {8, R"(C:\Tools\a.exe)"}}));
    EXPECT_EQ(service.ResolveProcessPath(0x01020304), R"(C:\Tools\a.exe)");
    ASSERT_EQ(pipe.requests.size(), 1U);
    EXPECT_EQ(pipe.requests[0].pipe, R"(\\.\pipe\BRENNVAR_PID_RESOLVE)");
    EXPECT_EQ(pipe.requests[0].bytes, ZerosWith(520, {{0, "\1"}, {4, "\4\3\2\1"}}));
    EXPECT_EQ(pipe.requests[0].pendingLimit, 600ms);
    EXPECT_EQ(pipe.openCount, 0);
}

TEST_F(ServicePipesTest, FetchesTheTrayText) {
    Answer(ZerosWith(4100, {{0, "\2"}, {4, "REFRESH"}}));
    EXPECT_EQ(service.FetchTrayText(), "REFRESH");
    ASSERT_EQ(pipe.requests.size(), 1U);
    EXPECT_EQ(pipe.requests[0].pipe, R"(\\.\pipe\BRENNVAR_IPC_TRAY)");
    EXPECT_EQ(pipe.requests[0].bytes, ZerosWith(4100, {{0, "\1"}}));
}

TEST_F(ServicePipesTest, TakesOnlyWholeAnswersWithStatusTwo) {
    struct Row {
        const char* what;
        RawBytes answer;
        std::optional<std::string> expected;
    };
    const Row rows[] = {
        {"found", ZerosWith(520, {{0, "\2"}, {8, "p"}}), "p"},
        {"found, but empty", ZerosWith(520, {{0, "\2"}}), ""},
        {"longer than a record", ZerosWith(600, {{0, "\2"}, {8, "p"}}), "p"},
        {"status 0", ZerosWith(520, {{8, "p"}}), std::nullopt},
        {"status 1", ZerosWith(520, {{0, "\1"}, {8, "p"}}), std::nullopt},
        {"status 3", ZerosWith(520, {{0, "\3"}, {8, "p"}}), std::nullopt},
        {"status 0x102", ZerosWith(520, {{0, "\2\1"}, {8, "p"}}), std::nullopt},
        {"one byte short", ZerosWith(519, {{0, "\2"}, {8, "p"}}), std::nullopt},
        {"status alone", ZerosWith(4, {{0, "\2"}}), std::nullopt},
        {"nothing", {}, std::nullopt},
    };
    for (const Row& row : rows) {
        Answer(row.answer);
        EXPECT_EQ(service.ResolveProcessPath(1), row.expected) << row.what;
        EXPECT_TRUE(service.LastCallMetService()) << row.what;
    }
    Answer(ZerosWith(4099, {{0, "\2"}, {4, "ATTACK"}}));
    EXPECT_EQ(service.FetchTrayText(), std::nullopt);
    Answer(ZerosWith(4100, {{0, "\1"}, {4, "ATTACK"}}));
    EXPECT_EQ(service.FetchTrayText(), std::nullopt);
}

TEST_F(ServicePipesTest, EndsTextsThatThePeerDidNotEnd) {
    const std::string text(4096, 'x');
    Answer(ZerosWith(520, {{0, "\2"}, {8, std::string_view(text).substr(0, 512)}}));
    EXPECT_EQ(service.ResolveProcessPath(1), text.substr(0, 259));
    Answer(ZerosWith(4100, {{0, "\2"}, {4, text}}));
    EXPECT_EQ(service.FetchTrayText(), text.substr(0, 4095));
}

TEST_F(ServicePipesTest, TreatsEveryFailureOfTheTransactionAsUnknown) {
    Answer(ZerosWith(520, {{0, "\2"}, {8, "p"}}));
    pipe.outcome = PipeOutcome::TimedOut;
    EXPECT_EQ(service.ResolveProcessPath(1), std::nullopt);
    EXPECT_FALSE(service.LastCallMetService());
    pipe.outcome = PipeOutcome::Failed;
    EXPECT_EQ(service.ResolveProcessPath(1), std::nullopt);
    pipe.outcome = PipeOutcome::Done;
    pipe.canSetMessageMode = false;
    EXPECT_EQ(service.ResolveProcessPath(1), std::nullopt);
    pipe.canOpen = false;
    EXPECT_EQ(service.ResolveProcessPath(1), std::nullopt);
    EXPECT_TRUE(service.LastCallMetService());
    EXPECT_EQ(pipe.openCount, 0);
    EXPECT_TRUE(clock.sleeps.empty());
}

TEST_F(ServicePipesTest, ClearsWhatAFailedTransactionLeftInTheAnswer) {
    Answer(RawBytes(3, std::byte{0xEE}));
    RawBytes answer(8, std::byte{0xDD});
    EXPECT_FALSE(service.PipeTransact("pipe", RawBytes(4), answer));
    EXPECT_EQ(answer, RawBytes(8));
}

TEST_F(ServicePipesTest, WaitsThirtyTimesAndThenKnowsThatTheServiceIsMissing) {
    pipe.failingWaits = FakePipe::kAlways;
    EXPECT_EQ(service.FetchTrayText(), std::nullopt);
    EXPECT_FALSE(service.LastCallMetService());
    ASSERT_EQ(pipe.waits.size(), 30U);
    EXPECT_EQ(pipe.waits[29].limit, 10'000ms);
    EXPECT_EQ(clock.sleeps, std::vector<std::chrono::milliseconds>(29, 200ms));
    EXPECT_TRUE(pipe.opened.empty());

    pipe.failingWaits = 0;
    Answer(ZerosWith(4100, {{0, "\2"}, {4, "ATTACK"}}));
    EXPECT_EQ(service.FetchTrayText(), "ATTACK");
    EXPECT_TRUE(service.LastCallMetService());
}

}  // namespace
}  // namespace brennvar
