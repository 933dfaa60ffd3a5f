#include "config/Settings.h"

#include <gtest/gtest.h>

#include "support/FakeIni.h"

namespace brennvar {

TEST(SettingsTest, TrimsTheFolderNamesAndKnowsTheirDefaults) {
    struct Row {
        const char *given, *language, *skin;
    };
    const Row rows[] = {{" \tBrazilian Portuguese \r", "Brazilian Portuguese", "Brazilian Portuguese"},
                        {"", "English", "Default"},
                        {" \t ", "English", "Default"}};
    for (const Row& row : rows) {
        const test::FakeIni ini({{"Language/Directory", row.given}, {"Skin/Directory", row.given}});
        EXPECT_EQ(ReadLanguageName(ini), row.language) << row.given;
        EXPECT_EQ(ReadSkinName(ini), row.skin) << row.given;
    }
    EXPECT_EQ(ReadLanguageName(test::FakeIni({})), "English");
    EXPECT_EQ(ReadSkinName(test::FakeIni({})), "Default");
}

}  // namespace brennvar
