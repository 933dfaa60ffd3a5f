#include "rules/ApplicationRules.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/FakeClock.h"
#include "support/GoldenCipher.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

using namespace std::string_view_literals;

class ApplicationRulesTest : public testing::Test {
protected:
    void WriteRules(const std::string& plain) const {
        m_folder.Write("rules.conf", test::EncipherByHand(plain, 264));
    }
    // The path in its field of 260, and the action.
    static std::string Rule(std::string path, char action) {
        path.resize(260, '\0');
        return path + std::string{action, 0, 0, 0};
    }
    RuleAction Lookup(std::string_view path) { return LookupApplicationAction(m_file, m_clock, path); }

    test::TempFolder m_folder;
    std::string m_file = m_folder.File("rules.conf");
    test::FakeClock m_clock;
};

TEST_F(ApplicationRulesTest, MatchesWholePathsWithoutRegardToCase) {
    const std::string longest(259, 'p');
    std::string rules = Rule(R"(c:\app.exe)", 1) + Rule(R"(C:\APP.EXE)", 2) + Rule("\xC4@[.exe", 2) +
                        Rule(longest + 'x', 1) + Rule("", 1) + Rule("odd", 7);
    for (int i = 0; i < 2000; ++i) rules += Rule("C:\\" + std::to_string(i) + ".exe", 2);
    WriteRules(rules);
    // The first of two counts; only ASCII letters have two cases; a field's last byte is taken as zero; an unknown
    // action is kept.
    const std::pair<std::string, std::uint32_t> found[] = {
        {R"(C:\App.exe)", 1}, {"\xC4@[.EXE", 2}, {longest, 1}, {"odd", 7}, {R"(C:\1999.exe)", 2}};
    for (const auto& [path, action] : found) EXPECT_EQ(Lookup(path), static_cast<RuleAction>(action)) << path;
    for (const std::string_view path : {R"(C:\App.ex)"sv, R"(C:\App.exe2)"sv, R"(:\App.exe)"sv, "\xE4@[.exe"sv,
                                        "\xC4`{.exe"sv, "odd\0x"sv, R"(C:\2000.exe)"sv, ""sv}) {
        EXPECT_EQ(Lookup(path), RuleAction::Ask) << path;
    }
    EXPECT_EQ(Lookup(longest + 'x'), RuleAction::Ask);
    EXPECT_EQ(Lookup(std::string(400, 'p')), RuleAction::Ask);
    EXPECT_EQ(LoadApplicationRules(m_file, m_clock)[1].path, longest);
}

TEST_F(ApplicationRulesTest, GroupsByActionInTheOrderOfTheFile) {
    WriteRules(Rule(R"(C:\a.exe)", 2) + Rule(R"(C:\b.exe)", 0) + Rule(R"(C:\c.exe)", 1) + Rule(R"(C:\d.exe)", 7) +
               Rule(R"(C:\e\)", 1) + Rule("f.exe", 2) + Rule("cut", 2).substr(0, 263));
    EXPECT_EQ(LoadApplicationRules(m_file, m_clock),
              (std::vector<ApplicationRow>{{"c.exe", R"(C:\c.exe)", ApplicationState::Deny},
                                           {R"(C:\e\)", R"(C:\e\)", ApplicationState::Deny},
                                           {"a.exe", R"(C:\a.exe)", ApplicationState::Allow},
                                           {"f.exe", "f.exe", ApplicationState::Allow},
                                           {"b.exe", R"(C:\b.exe)", ApplicationState::Ask},
                                           {"d.exe", R"(C:\d.exe)", ApplicationState::Ask}}));
    EXPECT_EQ(Lookup("cut"), RuleAction::Ask);
}

TEST_F(ApplicationRulesTest, CreatesAMissingFileExceptForAnEmptyPath) {
    EXPECT_EQ(Lookup(""), RuleAction::Ask);
    EXPECT_FALSE(std::filesystem::exists(m_file));
    EXPECT_EQ(Lookup("x"), RuleAction::Ask);
    EXPECT_TRUE(std::filesystem::exists(m_file));
}

}  // namespace
}  // namespace brennvar
