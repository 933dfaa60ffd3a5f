#include "tray/NotifyBox.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(NotifyBoxTest, IsFoundInThreeWays) {
    const PixelBox bar{0, 1040, 1920, 1080};
    const PixelBox upright{0, 0, 60, 1080};
    const PixelBox area{0, 0, 1920, 1040};
    const PixelBox icons{1700, 1040, 1920, 1080};
    const struct {
        const char* what;
        TaskbarFacts facts;
        PixelBox box;
    } rows[] = {
        {"the area itself",
         {bar, {{"Start", {}}, {"TrayNotifyWnd", icons}, {"TrayClockWClass", {}}}, {}, area},
         icons},
        {"beside a clock", {bar, {{"TrayClockWClass", {1850, 1045, 1920, 1075}}}, {}, area}, {0, 1040, 1850, 1080}},
        {"below a clock", {upright, {{"TrayClockWClass", {0, 1000, 60, 1074}}}, {}, area}, {0, 1074, 60, 1080}},
        {"the clock first",
         {bar, {{"TrayClockWClass", {1850, 1040, 1920, 1080}}, {"TrayNotifyWnd", icons}}, {}, area},
         {0, 1040, 1850, 1080}},
        {"a bar of another shell", {bar, {{"Other", icons}}, {}, area}, bar},
        {"left edge", {{}, {}, {{ScreenEdge::Left, upright}}, area}, {0, 980, 60, 1064}},
        {"right edge", {{}, {}, {{ScreenEdge::Right, {1860, 0, 1920, 1080}}}, area}, {1860, 980, 1920, 1064}},
        {"top edge", {{}, {}, {{ScreenEdge::Top, {0, 0, 1920, 40}}}, area}, {1820, 0, 1904, 40}},
        {"bottom edge", {{}, {}, {{ScreenEdge::Bottom, bar}}, area}, {1820, 1040, 1904, 1080}},
        {"no shell", {{}, {}, {}, area}, {1770, 1010, 1920, 1040}},
    };
    for (const auto& row : rows) EXPECT_EQ(FindNotifyBox(row.facts), row.box) << row.what;
    // Balloons point at the end of a whole bar.
    EXPECT_EQ(FindIcons(icons), icons);
    EXPECT_EQ(FindIcons(bar), (PixelBox{1820, 1040, 1904, 1080}));
    EXPECT_EQ(FindIcons(upright), (PixelBox{0, 980, 60, 1064}));
}

}  // namespace brennvar
