#include "logs/LogFiles.h"

#include <gtest/gtest.h>

#include "support/DataFolder.h"

namespace brennvar {
namespace {

TEST(LogFilesTest, FindsTheDaysThatHaveLogsNewestFirst) {
    const test::DataFolder folder;
    EXPECT_TRUE(FindLogDays(folder.Path(), LogKind::Traffic).empty());
    for (const char* name :
         {"20260228.log", "20251231.log", "20260301.LOG", "20240229.log", "20260309_packet.log", "20250101_dns.log",
          // No day, or no log:
          "20250229.log", "20261301.log", "20260100.log", "20260132.log", "2026030.log", "20260309.log.tmp",
          "2026-309.log", "-0260309.log", "x0260309.log", "20260310.txt", "notes.log"}) {
        folder.Write(std::string(R"(\Log\)") + name, "");
    }
    folder.Write(R"(\20260401.log)", "");  // elsewhere
    EXPECT_EQ(FindLogDays(folder.Path(), LogKind::Traffic),
              (std::vector<LocalDate>{{2026, 3, 1}, {2026, 2, 28}, {2025, 12, 31}, {2024, 2, 29}}));
    EXPECT_EQ(FindLogDays(folder.Path(), LogKind::Packet), (std::vector<LocalDate>{{2026, 3, 9}}));
    // The ninth of March has two logs now.
    folder.Write(R"(\Log\20260309_mac.log)", "");
    EXPECT_EQ(FindLogDays(folder.Path()),
              (std::vector<LocalDate>{
                  {2026, 3, 9}, {2026, 3, 1}, {2026, 2, 28}, {2025, 12, 31}, {2025, 1, 1}, {2024, 2, 29}}));
    EXPECT_EQ(FormatDay({.year = 2026, .month = 3, .day = 9}), "2026-03-09");
}

}  // namespace
}  // namespace brennvar
