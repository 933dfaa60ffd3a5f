#include "config/Settings.h"

#include <gtest/gtest.h>

#include "config/Folders.h"
#include "support/FakeIni.h"

namespace brennvar {
namespace {

TEST(SettingsTest, TrimsTheFolderNamesAndKnowsTheirDefaults) {
    struct Row {
        const char* given;
        const char* language;
        const char* skin;
    };
    const Row rows[] = {
        {"Deutsch", "Deutsch", "Deutsch"},
        {" \tBrazilian Portuguese \r", "Brazilian Portuguese", "Brazilian Portuguese"},
        {"", "English", "Default"},
        {" \t ", "English", "Default"},
    };
    for (const Row& row : rows) {
        const test::FakeIni ini({{{"Language", "Directory"}, row.given}, {{"Skin", "Directory"}, row.given}});
        EXPECT_EQ(ReadLanguageName(ini), row.language) << row.given;
        EXPECT_EQ(ReadSkinName(ini), row.skin) << row.given;
    }
    EXPECT_EQ(ReadLanguageName(test::FakeIni({})), "English");
    EXPECT_EQ(ReadSkinName(test::FakeIni({})), "Default");
}

TEST(FoldersTest, NamesTheFilesBelowBothFolders) {
    EXPECT_EQ(SettingsFilePath("D"), R"(D\settings.ini)");
    EXPECT_EQ(ConfigFilePath("D"), R"(D\config.conf)");
    EXPECT_EQ(RulesFilePath("D"), R"(D\Rules\rules.conf)");
    EXPECT_EQ(AdvancedRulesFilePath("D"), R"(D\Rules\rules_advanced.conf)");
    EXPECT_EQ(TrustedFilePath("D"), R"(D\trusted.conf)");
    EXPECT_EQ(AdviceFilePath("D"), R"(D\advice.dat)");
    EXPECT_EQ(LanguageFilePath("I", "English"), R"(I\Languages\English\default.ini)");
    EXPECT_EQ(SkinFilePath("I", "Default"), R"(I\Skins\Default\default.ini)");
}

}  // namespace
}  // namespace brennvar
