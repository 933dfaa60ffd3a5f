#include "config/Settings.h"

#include <gtest/gtest.h>

#include <memory>

#include "config/Language.h"
#include "support/FakeIni.h"

namespace brennvar {
namespace {

using test::FakeIni;

TEST(SettingsTest, TakesTheBareNameOfAFolderBesideTheProgram) {
    // Nothing: the name that is built in.
    const std::pair<std::string, std::optional<std::string>> rows[] = {
        {" \tSlovak \r", "Slovak"},   {"My Language", "My Language"}, {"..x", "..x"},        {"  ", std::nullopt},
        {R"(..\..\x)", std::nullopt}, {"a/b", std::nullopt},          {"C:x", std::nullopt}, {".", std::nullopt},
        {" .. ", std::nullopt}};
    for (const auto& [given, expected] : rows) {
        const FakeIni settings({{"Language/Directory", given}, {"Skin/Directory", given}});
        EXPECT_EQ(ReadLanguageName(settings), expected.value_or("English")) << given;
        EXPECT_EQ(ReadSkinName(settings), expected.value_or("Default")) << given;
    }
}

TEST(LanguageTest, StandsInWithEnglishForWhatTheFileLacks) {
    const Language language(std::make_unique<FakeIni>(FakeIni::Values{
        {"Language/DL_N_201_1", "eins"}, {"Language/DL_N_201_2", ""}, {"Language/DL_N_201_0", "x"}}));
    EXPECT_EQ(language.GetText(1, "one"), "eins");
    for (const int number : {0, 2, 3}) EXPECT_EQ(language.GetText(number, "English"), "English") << number;
}

}  // namespace
}  // namespace brennvar
