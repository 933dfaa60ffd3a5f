#include "service/CommandLine.h"

#include <gtest/gtest.h>

namespace brennvar::standin {
namespace {

TEST(CommandLineTest, ReadsEveryOption) {
    const auto line = ParseCommandLine({"--scenario", "a b.txt", "--journal", "j", "--data-folder", "d",
                                        "--slow-ms", "700", "--die-after", "2", "--no-driver"});
    ASSERT_TRUE(line);
    EXPECT_EQ(line->scenario, "a b.txt");
    EXPECT_EQ(line->journal, "j");
    EXPECT_EQ(line->dataFolder, "d");
    EXPECT_EQ(line->slowMilliseconds, 700U);
    EXPECT_EQ(line->dieAfter, 2U);
    EXPECT_FALSE(line->loadDriver);
    EXPECT_FALSE(line->help);

    EXPECT_FALSE(line->stop);
    EXPECT_TRUE(ParseCommandLine({"--stop"})->stop);
    EXPECT_TRUE(ParseCommandLine({"--help"})->help);

    const auto nothing = ParseCommandLine({});
    ASSERT_TRUE(nothing);
    EXPECT_TRUE(nothing->loadDriver);
    EXPECT_EQ(nothing->slowMilliseconds, 0U);
    EXPECT_EQ(nothing->dieAfter, 0U);
}

TEST(CommandLineTest, RefusesWhatItDoesNotUnderstand) {
    EXPECT_FALSE(ParseCommandLine({"--scenario"}));
    EXPECT_FALSE(ParseCommandLine({"--slow-ms", "soon"}));
    EXPECT_FALSE(ParseCommandLine({"--die-after", "-1"}));
    EXPECT_FALSE(ParseCommandLine({"--unknown", "1"}));
    EXPECT_FALSE(ParseCommandLine({"scenario.txt"}));
}

}  // namespace
}  // namespace brennvar::standin
