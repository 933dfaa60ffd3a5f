#include "ipc/CommandPipe.h"

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

constexpr char kPipe[] = R"(\\.\pipe\BRENNVAR_IPC_COMMAND)";

struct CommandPipeTest : testing::Test {
    FakePipe pipe;
    test::FakeClock clock;
    CommandPipe commands{pipe, clock};

    // The one record that was written, which must be the only thing that happened.
    RawBytes Sent() {
        EXPECT_EQ(pipe.writes.size(), 1U);
        if (pipe.writes.size() != 1) return {};
        EXPECT_EQ(pipe.writes[0].pipe, kPipe);
        EXPECT_EQ(pipe.openCount, 0);
        return pipe.writes[0].bytes;
    }
};

// The records of the other commands are those of the batches.
TEST_F(CommandPipeTest, PutsTextsWhereTheyStandAndCutsThemAtSizeMinusOne) {
    commands.CMD_SET_REGISTRY_VALUE("name", "data", "key");
    EXPECT_EQ(Sent(), ZerosWith(5596, {{0, "\x1C"}, {4, "name"}, {132, "data"}, {648, "key"}}));
    pipe.writes.clear();
    commands.CMD_SET_VALUE_10(5);
    EXPECT_EQ(Sent(), ZerosWith(5596, {{0, "\x0A"}, {644, "\5"}}));
    pipe.writes.clear();
    const std::string text(5000, 'x');
    const auto cut = [&](std::size_t size) { return std::string_view(text).substr(0, size); };
    commands.CMD_EVENT_REPORT(text, text, 0, text);
    EXPECT_EQ(Sent(), ZerosWith(5596, {{0, "\1"}, {4, cut(127)}, {132, cut(511)}, {648, cut(4095)}}));
    pipe.writes.clear();
    commands.CMD_SET_OPTION_TEXT(0x01020304, text);
    EXPECT_EQ(Sent(), ZerosWith(5596, {{0, "\x09"}, {5472, cut(119)}, {5592, "\4\3\2\1"}}));
}

TEST_F(CommandPipeTest, WaitsThirtyTimesAndWritesOnce) {
    pipe.failingWaits = FakePipe::kAlways;
    commands.CMD_RESET();
    EXPECT_EQ(pipe.waits, std::vector<std::chrono::milliseconds>(30, 10'000ms));
    EXPECT_EQ(clock.sleeps, std::vector<std::chrono::milliseconds>(29, 2'000ms));
    EXPECT_TRUE(pipe.opened.empty());
    // Fewer when the program stops.
    clock.stopped = true;
    commands.CMD_RESET();
    EXPECT_EQ(pipe.waits.size(), 31U);
    // One success in time is enough.
    clock.stopped = false;
    pipe.failingWaits = 29;
    commands.CMD_RESET();
    EXPECT_EQ(Sent(), ZerosWith(5596, {{0, "\x1D"}}));
    EXPECT_EQ(pipe.writes[0].pendingLimit, 600ms);
    // A write or an open that failed is not tried again.
    pipe.outcome = PipeOutcome::TimedOut;
    commands.CMD_RESET();
    pipe.canOpen = false;
    commands.CMD_RESET();
    EXPECT_EQ(pipe.opened.size(), 3U);
    EXPECT_EQ(pipe.writes.size(), 2U);
    EXPECT_EQ(pipe.openCount, 0);
}

}  // namespace
}  // namespace brennvar
