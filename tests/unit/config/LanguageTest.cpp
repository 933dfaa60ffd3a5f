#include "config/Language.h"

#include <gtest/gtest.h>

#include "support/FakeIni.h"

namespace brennvar {
namespace {

TEST(LanguageTest, TakesTheFilesTextAndNeverLeavesABlank) {
    const Language language(std::make_unique<test::FakeIni>(test::FakeIni::Values{
        {{"Language", "DL_N_201_2"}, "Erlauben"},
        {{"Language", "DL_N_201_3"}, ""},
        {{"Language", "DL_N_201_0"}, "no number"},
        {{"Color", "DL_N_201_4"}, "other section"},
    }));
    EXPECT_EQ(language.GetText(2, "Allow"), "Erlauben");
    EXPECT_EQ(language.GetText(3, "Ask"), "Ask");
    EXPECT_EQ(language.GetText(4, "Allowed"), "Allowed");
    EXPECT_EQ(language.GetText(0, "(8) Echo"), "(8) Echo");
    EXPECT_EQ(Language(nullptr).GetText(2, "Allow"), "Allow");
}

}  // namespace
}  // namespace brennvar
