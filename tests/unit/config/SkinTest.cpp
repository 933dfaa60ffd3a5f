// What the files beside the program say of its skins and languages.
#include "config/SkinTones.h"

#include <gtest/gtest.h>

#include "config/Language.h"
#include "config/Settings.h"
#include "support/FakeIni.h"

namespace brennvar {
namespace {

Skin SkinOf(test::FakeIni::Values values) {
    return {std::make_unique<test::FakeIni>(std::move(values)), R"(C:\Skins\X)"};
}

TEST(SkinTest, ReadsEachPartOfAColourByItself) {
    test::FakeIni::Values parts = {
        {"Color/A_R", "1"}, {"Color/B_R", "0"}, {"Color/B_G", "255"}, {"Color/B_B", "16"}};
    parts.insert({{"Color/C_R", "256"}, {"Color/C_G", "-1"}, {"Color/C_B", "7x"}});
    const Skin skin = SkinOf(parts);
    EXPECT_EQ(skin.GetSkinColor("A", 10, 2, 3), 0x030201U);
    EXPECT_EQ(skin.GetSkinColor("B", 9, 9, 9), 0x10FF00U);
    EXPECT_EQ(skin.GetSkinColor("C", 10, 11, 12), 0x0C0B0AU) << "no parts of a colour";
    EXPECT_EQ(Skin(nullptr, "").GetSkinColor("A", 10, 11, 12), 0x0C0B0AU);
}

TEST(SkinTest, TonesHaveTheColoursOfTheSkinOrTheirOwn) {
    const Skin skin = SkinOf({{"Color/COLOR_DENY_R", "1"}, {"Color/COLOR_PILL_B", "2"}});
    EXPECT_EQ(ToneColour(skin, Tone::Deny), 0x2C0E01U);
    // A pill only for what does not read on the list: on a dark one the skin's light pill, and a dark one for a
    // colour that is too bright for it.
    const Skin dark =
        SkinOf({{"Color/COLOR_LIST_R", "38"}, {"Color/COLOR_LIST_G", "43"}, {"Color/COLOR_LIST_B", "51"}});
    const std::optional<std::uint32_t> kNone;
    EXPECT_EQ(PillColour(skin, Tone::Deny), kNone);
    EXPECT_EQ(PillColour(skin, Tone::Ask), 0x33271BU);
    EXPECT_EQ(PillColour(dark, Tone::Allow), 0xF0E8E2U);
    EXPECT_EQ(PillColour(dark, Tone::Deny), 0xF0E8E2U);
    EXPECT_EQ(PillColour(dark, Tone::Ask), kNone);
    EXPECT_EQ(PillColour(dark, Tone::Muted), kNone);
}

TEST(SkinTest, FindsPicturesInItsFolderOnly) {
    const Skin skin = SkinOf({{"Image/A", "other.png"}, {"Image/B", R"(..\up.png)"}, {"Image/C", "D:x.png"}});
    EXPECT_EQ(skin.GetSkinImagePath("A", "a.png"), R"(C:\Skins\X\other.png)");
    EXPECT_EQ(skin.GetSkinImagePath("B", "b.png"), R"(C:\Skins\X\b.png)");
    EXPECT_EQ(skin.GetSkinImagePath("C", "c.png"), R"(C:\Skins\X\c.png)");
    EXPECT_EQ(skin.GetSkinImagePath("D", "d.png"), R"(C:\Skins\X\d.png)");
}

TEST(SettingsTest, TakesTheBareNameOfAFolderBesideTheProgram) {
    // Nothing: the name that is built in.
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {" \tSlovak \r", "Slovak"},   {"My Language", "My Language"}, {"..x", "..x"},        {"  ", std::nullopt},
        {R"(..\..\x)", std::nullopt}, {"a/b", std::nullopt},          {"C:x", std::nullopt}, {".", std::nullopt},
        {" .. ", std::nullopt}};
    for (const auto& [given, expected] : rows) {
        const test::FakeIni settings({{"Language/Directory", given}, {"Skin/Directory", given}});
        EXPECT_EQ(ReadLanguageName(settings), expected.value_or("English")) << given;
        EXPECT_EQ(ReadSkinName(settings), expected.value_or("Default")) << given;
    }
}

TEST(LanguageTest, StandsInWithEnglishForWhatTheFileLacks) {
    const Language language(std::make_unique<test::FakeIni>(test::FakeIni::Values{
        {"Language/DL_N_201_1", "eins"}, {"Language/DL_N_201_2", ""}, {"Language/DL_N_201_0", "x"}}));
    EXPECT_EQ(language.GetText(1, "one"), "eins");
    for (const int number : {0, 2, 3}) EXPECT_EQ(language.GetText(number, "English"), "English") << number;
}

}  // namespace
}  // namespace brennvar
