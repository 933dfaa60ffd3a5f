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

}  // namespace brennvar
