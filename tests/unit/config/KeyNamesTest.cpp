#include "config/KeyNames.h"

#include <gtest/gtest.h>

#include "support/FakeIni.h"

namespace brennvar {
namespace {

TEST(KeyNamesTest, AreTheOnesOfTheLanguage) {
    const Language english(nullptr);
    const Language german(
        std::make_unique<test::FakeIni>(test::FakeIni::Values{{"Language/DL_N_201_2460", "Strg"},
                                                              {"Language/DL_N_201_2461", "Auf"},
                                                              {"Language/DL_N_201_2462", "Ab"},
                                                              {"Language/DL_N_201_2463", "Entf"},
                                                              {"Language/DL_N_201_2464", "Eingabe"}}));
    const struct {
        KeyStroke stroke;
        std::string_view english, german;
    } rows[] = {{KeyStroke::ControlA, "Ctrl+A", "Strg+A"},
                {KeyStroke::ControlC, "Ctrl+C", "Strg+C"},
                {KeyStroke::ControlUp, "Ctrl+Up", "Strg+Auf"},
                {KeyStroke::ControlDown, "Ctrl+Down", "Strg+Ab"},
                {KeyStroke::Delete, "Del", "Entf"},
                {KeyStroke::Enter, "Enter", "Eingabe"},
                {KeyStroke::F5, "F5", "F5"}};
    for (const auto& row : rows) {
        EXPECT_EQ(KeyName(row.stroke, english), row.english);
        EXPECT_EQ(KeyName(row.stroke, german), row.german);
    }
    EXPECT_EQ(WithKey("&Copy", KeyStroke::ControlC, german), "&Copy\tStrg+C");
}

}  // namespace
}  // namespace brennvar
