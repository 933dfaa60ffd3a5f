// What the notification area shows, where its icons are, and what they look like.
#include "tray/TrayNotice.h"

#include <gtest/gtest.h>

#include "tray/NotifyBox.h"

namespace brennvar {

TEST(TrayNoticeTest, SplitsAtTheFirstBarAndKnowsTwoWords) {
    using Kind = TrayNotice::Kind;
    const struct {
        std::string_view given;
        Kind kind;
        std::string_view text, link;
    } rows[] = {{"REFRESH| ", Kind::Refresh, "REFRESH", ""},
                {"ATTACK|http://x", Kind::Attack, "ATTACK", "http://x"},
                {"Attack", Kind::Balloon, "Attack", ""},       // case counts
                {"REFRESH |", Kind::Balloon, "REFRESH ", ""},  // and so does a blank
                {"Port scan|  \thttp://a/b?c|d \r\n", Kind::Balloon, "Port scan", "http://a/b?c|d"},
                {"|link", Kind::Balloon, "", "link"},
                {"", Kind::Balloon, "", ""}};
    for (const auto& row : rows) {
        const TrayNotice notice = ParseTrayNotice(row.given);
        EXPECT_TRUE(notice.kind == row.kind && notice.text == row.text && notice.link == row.link) << row.given;
    }
}

TEST(TrayNoticeTest, IsCutToWhatABalloonHolds) {
    const struct {
        std::string given;
        std::size_t characters, lines;
        std::string cut;
    } rows[] = {{" one two ", 7, 1, "one two"},
                {"one two three four", 16, 9, "one two three..."},  // in a word: back to the one before
                {"one two three", 12, 9, "one two thre..."},        // unless that is far
                {std::string(4095, 'x'), 5, 9, "xxxxx..."},
                {"a\nb\nc", 100, 2, "a\nb..."},
                {"a\nb\n", 100, 2, "a\nb"},
                {"", 5, 1, ""}};
    for (const auto& row : rows) EXPECT_EQ(CutNotice(row.given, row.characters, row.lines), row.cut) << row.given;
}

TEST(TrayNoticeTest, OnlyAddressesOfTheWebAreOpened) {
    for (const char* link : {"http://a", "https://www.example.com/x?y=1#z", "HTTPS://A"}) {
        EXPECT_TRUE(IsWebAddress(link)) << link;
    }
    for (const char* link : {"", "http://", "https:a", "file://c/x.exe", "C:\\x.exe", "javascript:1", " http://a",
                             "http://a b", "http://a\"b", "http://a\n", "http://\xE4"}) {
        EXPECT_FALSE(IsWebAddress(link)) << link;
    }
}

TEST(NotifyBoxTest, IsFoundInThreeWays) {
    const PixelBox bar{0, 1040, 1920, 1080}, upright{0, 0, 60, 1080}, area{0, 0, 1920, 1040};
    const PixelBox icons{1700, 1040, 1920, 1080}, clock{1850, 1045, 1920, 1075};
    const struct {
        const char* what;
        TaskbarFacts facts;
        PixelBox box;
    } rows[] = {
        {"the area itself",
         {bar, {{"Start", {}}, {"TrayNotifyWnd", icons}, {"TrayClockWClass", {}}}, {}, area},
         icons},
        {"beside a clock, which comes first",
         {bar, {{"TrayClockWClass", clock}, {"TrayNotifyWnd", icons}}, {}, area},
         {0, 1040, 1850, 1080}},
        {"below a clock", {upright, {{"TrayClockWClass", {0, 1000, 60, 1074}}}, {}, area}, {0, 1074, 60, 1080}},
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
