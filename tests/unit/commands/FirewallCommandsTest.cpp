#include "commands/FirewallCommands.h"

#include <gtest/gtest.h>

#include <functional>

#include "commands/Calendar.h"
#include "support/FakeClock.h"
#include "support/FakePipe.h"
#include "support/RawBytes.h"

namespace brennvar {
namespace {

TEST(FirewallCommandsTest, SendTheirRecordsAndThenTheirReport) {
    const Language language(nullptr);
    struct Row {
        std::function<void(CommandPipe&)> send;
        std::vector<test::Pieces> expected;
    };
    const Row rows[] = {
        {[&](auto& pipe) { TerminateProcess(pipe, language, 0x01020304, "c:\\a.exe"); },
         {{{0, "\3"}, {4748, "\4\3\2\1"}},
          {{0, "\1"}, {4, "Process termination"}, {132, "c:\\a.exe"}, {644, "\2"}}}},
        {[&](auto& pipe) { BlockAddress(pipe, language, 0x0302010A, 600); },
         {{{0, "\2"}, {4744, "\x0A\1\2\3"}},
          {{0, "\1"},
           {4, "Blocked connection"},
           {132, "10.1.2.3"},
           {644, "\2"},
           {648, "IP: 10.1.2.3. Blocking IP address for 600 seconds"}}}},
        {[](auto& pipe) { DeleteLogs(pipe, {.year = 2026, .month = 3, .day = 9}, false); },
         {{{0, "\x17"}, {132, "20260309"}}}},
        {[](auto& pipe) { DeleteLogs(pipe, {.year = 987, .month = 12, .day = 31}, true); },
         {{{0, "\x17"}, {132, "09871231"}, {644, "\1"}}}},
    };
    for (const Row& row : rows) {
        test::FakePipe pipe;
        test::FakeClock clock;
        CommandPipe commands(pipe, clock);
        row.send(commands);
        ASSERT_EQ(pipe.writes.size(), row.expected.size()) << row.expected.back().back().second;
        for (std::size_t i = 0; i < row.expected.size(); ++i) {
            EXPECT_EQ(pipe.writes[i].bytes, test::ZerosWith(5596, row.expected[i]))
                << row.expected[i].back().second << ", record " << i;
        }
    }
}

TEST(CalendarTest, KeepsTheDayInsideItsMonth) {
    EXPECT_EQ(NearestDay({.year = 2026, .month = 12, .day = 31}), (LocalDate{2026, 12, 31}));
    EXPECT_EQ(NearestDay({.year = 2026, .month = 4, .day = 31}), (LocalDate{2026, 4, 30}));
    // Leap years: every fourth, but not the full centuries, except every fourth of these.
    EXPECT_EQ(NearestDay({.year = 2026, .month = 2, .day = 31}), (LocalDate{2026, 2, 28}));
    EXPECT_EQ(NearestDay({.year = 2028, .month = 2, .day = 31}), (LocalDate{2028, 2, 29}));
    EXPECT_EQ(NearestDay({.year = 2100, .month = 2, .day = 31}), (LocalDate{2100, 2, 28}));
    EXPECT_EQ(NearestDay({.year = 2000, .month = 2, .day = 31}), (LocalDate{2000, 2, 29}));
}

}  // namespace
}  // namespace brennvar
