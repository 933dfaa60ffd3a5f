#include "mail/MailAddress.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(MailAddressTest, ReadsWhatUsersType) {
    struct Row {
        std::string_view text;
        std::vector<MailAddress> expected;
    };
    const Row rows[] = {
        {"", {}},
        {" ; , ", {}},
        {"a@b.example", {{"", "a@b.example"}}},
        {" a@b , <c@d>;e@f ", {{"", "a@b"}, {"", "c@d"}, {"", "e@f"}}},
        {"Ann Other <a@b>", {{"Ann Other", "a@b"}}},
        {"\"Other, \\\"Ann\\\"\" <a@b>, c@d", {{"Other, \"Ann\"", "a@b"}, {"", "c@d"}}},
        {"a < b <c@d>", {{"a < b", "c@d"}}},
        {std::string_view("a@b\r\n", 5), {{"", "a@b"}}},
    };
    for (const Row& row : rows) {
        const auto parsed = ParseAddresses(row.text);
        ASSERT_TRUE(parsed) << row.text;
        EXPECT_EQ(*parsed, row.expected) << row.text;
    }
}

TEST(MailAddressTest, RefusesWhatIsNoAddress) {
    const std::string longest = std::string(250, 'a') + "@b.c";
    EXPECT_TRUE(ParseAddresses(longest));
    const std::string_view rows[] = {"a",     "@b",   "a@",     "a@b, c",     "a b@c",        "a@b>",
                                     "a>b@c", "<a@b", "a@b\tc", "a@b\r\nc@d", "x <a@b\r\nc>", "x <>"};
    for (const std::string_view row : rows) EXPECT_FALSE(ParseAddresses(row)) << row;
    EXPECT_FALSE(ParseAddresses('a' + longest));
    EXPECT_FALSE(ParseAddresses(std::string_view("a\0@b", 4)));
    // A command is not as strict about names of local boxes.
    EXPECT_TRUE(IsSafeAddress("postmaster"));
    EXPECT_FALSE(IsSafeAddress("a@b> NOTIFY=NEVER"));
    EXPECT_FALSE(IsSafeAddress(""));
}

}  // namespace
}  // namespace brennvar
