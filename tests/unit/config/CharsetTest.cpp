#include "config/Charset.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace brennvar {

TEST(CharsetTest, ComparesTheFolderNameExactly) {
    const std::pair<std::string, int> rows[] = {{"Slovak", 238}, {"Russian", 204}, {"ChineseT", 1},
                                                {"German", 0},   {"russian", 0},   {"Russian ", 0}};
    for (const auto& [language, charset] : rows) EXPECT_EQ(GetFontCharset(language), charset) << language;
}

}  // namespace brennvar
