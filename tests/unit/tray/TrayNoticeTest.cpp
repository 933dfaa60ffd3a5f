#include "tray/TrayNotice.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(TrayNoticeTest, SplitsAtTheFirstBarAndKnowsTwoWords) {
    using Kind = TrayNotice::Kind;
    struct Row {
        std::string_view given;
        Kind kind;
        std::string_view text, link;
    };
    const Row rows[] = {{"REFRESH| ", Kind::Refresh, "REFRESH", ""},
                        {"ATTACK|http://x", Kind::Attack, "ATTACK", "http://x"},
                        {"Attack", Kind::Balloon, "Attack", ""},       // case counts
                        {"REFRESH |", Kind::Balloon, "REFRESH ", ""},  // and so does a blank
                        {"Port scan|  \thttp://a/b?c|d \r\n", Kind::Balloon, "Port scan", "http://a/b?c|d"},
                        {"|link", Kind::Balloon, "", "link"},
                        {"", Kind::Balloon, "", ""}};
    for (const Row& row : rows) {
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
                {"one two three", 7, 9, "one two..."},              // at its end
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

}  // namespace brennvar
