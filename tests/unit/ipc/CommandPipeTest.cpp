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

TEST_F(CommandPipeTest, EverySenderFillsOnlyTheFieldsOfItsCommand) {
    AdvancedRuleRecord rule{};
    rule.id = 0xA1;
    rule.zero = 0xA2000000;
    struct Row {
        std::function<void(CommandPipe&)> send;
        test::Pieces expected;
    };
    const Row rows[] = {
        {[](auto& p) { p.CMD_EVENT_REPORT("title", "subject", 0x01020304, "detail"); },
         {{0, "\1"}, {4, "title"}, {132, "subject"}, {644, "\4\3\2\1"}, {648, "detail"}}},
        {[](auto& p) { p.CMD_BLOCK_ADDRESS(*ParseIpv4("10.1.2.3")); }, {{0, "\2"}, {4744, "\x0A\1\2\3"}}},
        {[](auto& p) { p.CMD_TERMINATE_PROCESS(0x01020304); }, {{0, "\3"}, {4748, "\4\3\2\1"}}},
        {[&](auto& p) { p.CMD_ADD_ADVANCED_RULE(rule); }, {{0, "\4"}, {4752, "\xA1"}, {5463, "\xA2"}}},
        {[&](auto& p) { p.CMD_MODIFY_ADVANCED_RULE(0x01020304, rule); },
         {{0, "\5"}, {4752, "\xA1"}, {5463, "\xA2"}, {5464, "\4\3\2\1"}}},
        {[](auto& p) { p.CMD_DELETE_ADVANCED_RULE(7); }, {{0, "\6"}, {5464, "\7"}}},
        {[](auto& p) { p.CMD_SET_OPTION(18, 600); }, {{0, "\x08"}, {5468, "\x58\x02"}, {5592, "\x12"}}},
        {[](auto& p) { p.CMD_SET_OPTION_TEXT(4, "text"); }, {{0, "\x09"}, {5472, "text"}, {5592, "\4"}}},
        {[](auto& p) { p.CMD_SET_VALUE_10(5); }, {{0, "\x0A"}, {644, "\5"}}},
        {[](auto& p) { p.CMD_SET_SKIN("Default"); }, {{0, "\x12"}, {5472, "Default"}}},
        {[](auto& p) { p.CMD_SET_LANGUAGE("English"); }, {{0, "\x13"}, {5472, "English"}}},
        {[](auto& p) { p.CMD_SET_APPLICATION_RULE("c:\\a.exe", RuleCommandAction::Remove); },
         {{0, "\x16"}, {132, "c:\\a.exe"}, {644, "\3"}}},
        {[](auto& p) { p.CMD_DELETE_LOGS("20260309", 1); }, {{0, "\x17"}, {132, "20260309"}, {644, "\1"}}},
        {[](auto& p) { p.CMD_SET_RUN_STATE(1); }, {{0, "\x18"}, {644, "\1"}}},
        {[](auto& p) { p.CMD_SET_VALUE_25(1); }, {{0, "\x19"}, {644, "\1"}}},
        {[](auto& p) { p.CMD_ALLOW_PROCESS_TEXT("c:\\a.exe"); }, {{0, "\x1A"}, {5472, "c:\\a.exe"}}},
        {[](auto& p) { p.CMD_SET_REGISTRY_VALUE("name", "data", "key"); },
         {{0, "\x1C"}, {4, "name"}, {132, "data"}, {648, "key"}}},
        {[](auto& p) { p.CMD_MOVE_ADVANCED_RULE_UP(7); }, {{0, "\x1E"}, {5464, "\7"}}},
        {[](auto& p) { p.CMD_MOVE_ADVANCED_RULE_DOWN(7); }, {{0, "\x1F"}, {5464, "\7"}}}};
    // The commands without a field.
    using P = CommandPipe;
    void (P::*const bare[])() = {
        &P::CMD_RELOAD_ADVANCED_RULES, &P::CMD_SHUTDOWN_SECOND,    &P::CMD_RELOAD_APPLICATION_RULES,
        &P::CMD_SHUTDOWN_FIRST,        &P::CMD_OPTION7_ON,         &P::CMD_OPTION7_OFF,
        &P::CMD_RELOAD_OPTIONS,        &P::CMD_RESET_FINGERPRINTS, &P::CMD_SEND_TEST_MAIL,
        &P::CMD_RELOAD_SIGNATURES,     &P::CMD_RESET_TRUSTED,      &P::CMD_RESET};
    const std::string_view codes = "\x07\x0B\x0C\x0D\x0E\x0F\x10\x11\x14\x15\x1B\x1D";
    EXPECT_EQ(std::size(rows) + std::size(bare), 31U);
    for (std::size_t i = 0; i < std::size(bare); ++i) {
        pipe.writes.clear();
        (commands.*bare[i])();
        EXPECT_EQ(Sent(), ZerosWith(5596, {{0, codes.substr(i, 1)}})) << i;
    }
    for (const Row& row : rows) {
        pipe.writes.clear();
        row.send(commands);
        EXPECT_EQ(Sent(), ZerosWith(5596, row.expected)) << "command " << int{row.expected[0].second[0]};
    }
}

TEST_F(CommandPipeTest, CutsLongTextsAtSizeMinusOne) {
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
