#include "config/Settings.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

// An INI file in which every key has the same value.
struct OneValue final : IniSource {
    std::string value;
    [[nodiscard]] std::string Read(const std::string&, const std::string&, const std::string&) const override {
        return value;
    }
};

TEST(SettingsTest, TakesTheBareNameOfAFolderBesideTheProgram) {
    const std::pair<const char*, const char*> rows[] = {{" \tSlovak \r", "Slovak"}, {"My Language", "My Language"},
                                                        {"  ", "English"},          {R"(..\..\x)", "English"},
                                                        {"a/b", "English"},         {"C:x", "English"},
                                                        {" .. ", "English"},        {"..x", "..x"}};
    for (const auto& [given, expected] : rows) {
        OneValue settings;
        settings.value = given;
        EXPECT_EQ(ReadLanguageName(settings), expected) << given;
    }
}

}  // namespace
}  // namespace brennvar
