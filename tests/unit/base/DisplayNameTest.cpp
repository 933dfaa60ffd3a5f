#include "base/DisplayName.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(DisplayNameTest, TakesTheDescriptionCutTo40OrTheWholeFileName) {
    const std::string forty(40, 'd');
    struct Row {
        std::string path, description, expected;
    };
    const Row rows[] = {{R"(C:\a\mail.exe)", forty, forty},
                        {R"(C:\a\mail.exe)", forty + "d", std::string(37, 'd') + "..."},
                        {"C:\\a\\n" + forty, "", "n" + forty},
                        {"mail.exe", "", "mail.exe"},
                        {R"(C:\Program Files\)", "", R"(C:\Program Files\)"},  // nothing behind the last backslash
                        {"C:/bin/mail.exe", "", "C:/bin/mail.exe"},            // only the backslash parts
                        {"", "", ""}};
    for (const Row& row : rows) EXPECT_EQ(DisplayNameOf(row.path, row.description), row.expected) << row.path;
}

}  // namespace brennvar
