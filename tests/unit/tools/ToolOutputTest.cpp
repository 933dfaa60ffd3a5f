#include "tools/ToolOutput.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(ToolLinesTest, WakesOnceForLinesThatAreTakenInPieces) {
    int woken = 0;
    ToolLines lines([&] { ++woken; });
    EXPECT_EQ(lines.Take(10).count, 0U);
    for (const char* line : {"one", "", "three"}) lines.Print(line);
    EXPECT_EQ(woken, 1);
    ToolLines::Taken taken = lines.Take(2);
    EXPECT_EQ(taken.text, "one\n");  // the second line is empty
    EXPECT_EQ(taken.count, 2U);
    EXPECT_TRUE(taken.hasMore);
    taken = lines.Take(2);
    EXPECT_EQ(taken.text, "three");
    EXPECT_FALSE(taken.hasMore);
    lines.Print("four");
    EXPECT_EQ(woken, 2);
}

TEST(ToolLinesTest, TakesBackWhatWasPrinted) {
    int woken = 0;
    ToolLines lines([&] { ++woken; });
    lines.Print("wait");
    lines.Clear();
    lines.Print("answer");
    EXPECT_EQ(woken, 1);
    ToolLines::Taken taken = lines.Take(10);
    EXPECT_TRUE(taken.isAnew);
    EXPECT_EQ(taken.text, "answer");
    lines.Clear();  // of what was taken long ago
    EXPECT_EQ(woken, 2);
    lines.Print("second");
    EXPECT_EQ(woken, 2);
    EXPECT_TRUE(lines.Take(10).isAnew);
    EXPECT_FALSE(lines.Take(10).isAnew);
}

TEST(ToolLinesTest, LetsNoPeerBreakALine) {
    ToolLines lines([] {});
    lines.Print("a\r\nIP: 10.0.0.1\x1B[31m\x7F\xE9");
    EXPECT_EQ(lines.Take(10).text, "a  IP: 10.0.0.1 [31m \xE9");
}

}  // namespace
}  // namespace brennvar
