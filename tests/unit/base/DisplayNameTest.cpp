#include "base/DisplayName.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(DisplayNameTest, TakesTheFileNameOrTheWholePath) {
    struct Row {
        std::string_view path, expected;
    };
    const Row rows[] = {
        {R"(C:\Program Files\Mail\mail.exe)", "mail.exe"},
        {"mail.exe", "mail.exe"},
        {R"(\mail.exe)", "mail.exe"},
        {R"(C:\Program Files\)", R"(C:\Program Files\)"},  // nothing behind the last backslash
        {R"(\)", R"(\)"},
        {"C:/bin/mail.exe", "C:/bin/mail.exe"},  // only the backslash parts
        {"", ""},
    };
    for (const Row& row : rows) EXPECT_EQ(FileNameOf(row.path), row.expected) << row.path;
}

TEST(DisplayNameTest, CutsFrom41Characters) {
    const std::string forty = "1234567890123456789012345678901234567890";
    EXPECT_EQ(CutTo40(forty), forty);
    EXPECT_EQ(CutTo40(forty + "1"), "1234567890123456789012345678901234567...");
    EXPECT_EQ(CutTo40(forty + forty), "1234567890123456789012345678901234567...");
    EXPECT_EQ(CutTo40(""), "");
}

TEST(DisplayNameTest, CutsDescriptionsButNotFileNames) {
    const std::string longName(60, 'n');
    EXPECT_EQ(DisplayNameOf(R"(C:\a\mail.exe)", "Mail Reader"), "Mail Reader");
    EXPECT_EQ(DisplayNameOf(R"(C:\a\mail.exe)", std::string(41, 'd')), std::string(37, 'd') + "...");
    EXPECT_EQ(DisplayNameOf("C:\\a\\" + longName, ""), longName);
}

}  // namespace
}  // namespace brennvar
