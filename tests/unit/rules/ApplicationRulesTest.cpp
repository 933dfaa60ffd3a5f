#include "rules/ApplicationRules.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/FakeClock.h"
#include "support/GoldenCipher.h"
#include "support/TempFolder.h"

namespace brennvar {
namespace {

class ApplicationRulesTest : public testing::Test {
protected:
    void WriteRules(const std::string& plain) const {
        m_folder.Write("rules.conf", test::EncipherByHand(plain, sizeof(ApplicationRuleRecord)));
    }
    static std::string Rule(std::string_view path, std::uint32_t action) {
        ApplicationRuleRecord record{.path = {}, .action = static_cast<RuleAction>(action)};
        PutText(record.path, path);
        return test::BytesOf(record);
    }
    RuleAction Lookup(std::string_view path) { return LookupApplicationAction(m_file, m_clock, path); }

    test::TempFolder m_folder;
    std::string m_file = m_folder.File("rules.conf");
    test::FakeClock m_clock;
};

TEST_F(ApplicationRulesTest, ReadsARuleEncipheredByHand) {
    // "C:\Program Files\App\app.exe", allowed.
    m_folder.Write("rules.conf", test::FromHex("4d20d5f0b40ff49a7e4fa6e049033b24d6b5a2f932a8cd57563692ecce428a3f"
                                               "8572338d85503bd5088aa0d853a9a4f4ba5ba43253b76204db674663f024c9c3"
                                               "522839f6573f79520948a2453fe86b49c02f6171464e26d63d6ed788becf2449"
                                               "e7be8bb2ef9e667925ff3f5598589abcfcc59a1742ea9cbd57ce2821ff8e3985"
                                               "8b5b9890b8355c8d3fb7335ca9845cf742dc3f25ee78d045525848c43e92401d"
                                               "123e4c106c37f90a01eacdfce3709967f18ca5408791d04321e8ff65c2a5c12c"
                                               "a7c2fb8688f10340a79ed7fd6604ef5236cc0d10929bc9bf152ac7d743117c5e"
                                               "4a86b97452186a0739102ed7fd56af05e7e3c2d9e0947fdc061428f8630b46f8"
                                               "66becb225af199d1"));
    EXPECT_EQ(Lookup(R"(C:\Program Files\App\app.exe)"), RuleAction::Allow);
    EXPECT_EQ(
        LoadApplicationRules(m_file, m_clock),
        (std::vector<ApplicationRow>{{"app.exe", R"(C:\Program Files\App\app.exe)", ApplicationState::Allow}}));
}

TEST_F(ApplicationRulesTest, MatchesWholePathsWithoutRegardToCase) {
    const std::string longest(259, 'p');
    WriteRules(Rule(R"(c:\app.exe)", 1) + Rule(R"(C:\APP.EXE)", 2) + Rule("\xC4@[.exe", 2) + Rule(longest, 1) +
               Rule("", 1) + Rule("odd", 7));
    struct Row {
        std::string path;
        std::uint32_t expected;
    };
    const Row rows[] = {
        {R"(C:\App.exe)", 1},           // the first of two
        {R"(C:\App.ex)", 0},            // a part of a path is another path
        {R"(C:\App.exe2)", 0},          //
        {R"(:\App.exe)", 0},            //
        {"\xC4@[.EXE", 2},              // neighbours of the letters
        {"\xE4@[.exe", 0},              // only ASCII letters have two cases
        {"\xC4`{.exe", 0},              //
        {longest, 1},                   // a full field
        {longest + 'p', 0},             // longer than any field
        {std::string(400, 'p'), 0},     //
        {"", 0},                        // never a rule, not even with an empty one there
        {std::string("odd\0x", 5), 0},  // no text holds a zero
        {"odd", 7},                     // kept as it stands
    };
    for (const Row& row : rows) EXPECT_EQ(static_cast<std::uint32_t>(Lookup(row.path)), row.expected) << row.path;
}

TEST_F(ApplicationRulesTest, EndsAPathAtItsLastByteWhateverThatHolds) {
    WriteRules(std::string(260, 'p') + std::string("\x01\0\0\0", 4));
    EXPECT_EQ(Lookup(std::string(259, 'p')), RuleAction::Deny);
    EXPECT_EQ(Lookup(std::string(260, 'p')), RuleAction::Ask);
    ASSERT_EQ(LoadApplicationRules(m_file, m_clock).size(), 1U);
    EXPECT_EQ(LoadApplicationRules(m_file, m_clock)[0].path, std::string(259, 'p'));
}

TEST_F(ApplicationRulesTest, GroupsByActionInTheOrderOfTheFile) {
    WriteRules(Rule(R"(C:\a.exe)", 2) + Rule(R"(C:\b.exe)", 0) + Rule(R"(C:\c.exe)", 1) + Rule(R"(C:\d.exe)", 7) +
               Rule(R"(C:\e\)", 1) + Rule("f.exe", 2));
    EXPECT_EQ(LoadApplicationRules(m_file, m_clock), (std::vector<ApplicationRow>{
                                                         {"c.exe", R"(C:\c.exe)", ApplicationState::Deny},
                                                         {R"(C:\e\)", R"(C:\e\)", ApplicationState::Deny},
                                                         {"a.exe", R"(C:\a.exe)", ApplicationState::Allow},
                                                         {"f.exe", "f.exe", ApplicationState::Allow},
                                                         {"b.exe", R"(C:\b.exe)", ApplicationState::Ask},
                                                         {"d.exe", R"(C:\d.exe)", ApplicationState::Ask},
                                                     }));
}

TEST_F(ApplicationRulesTest, CountsWholeRecordsOnly) {
    const std::string rules = Rule("a", 1) + Rule("b", 1) + Rule("c", 1);
    struct Row {
        std::size_t size, rows;
    };
    for (const Row row : {Row{0, 0}, {263, 0}, {264, 1}, {527, 1}, {529, 2}}) {
        WriteRules(rules.substr(0, row.size));
        EXPECT_EQ(LoadApplicationRules(m_file, m_clock).size(), row.rows) << row.size;
        EXPECT_EQ(Lookup("b"), row.rows == 2 ? RuleAction::Deny : RuleAction::Ask) << row.size;
    }
}

TEST_F(ApplicationRulesTest, FindsTheLastOfManyRules) {
    std::string rules;
    for (int i = 0; i < 2000; ++i) rules += Rule("C:\\" + std::to_string(i) + ".exe", 2);
    WriteRules(rules);
    EXPECT_EQ(Lookup(R"(C:\1999.exe)"), RuleAction::Allow);
    EXPECT_EQ(Lookup(R"(C:\2000.exe)"), RuleAction::Ask);
}

TEST_F(ApplicationRulesTest, CreatesAMissingFileExceptForAnEmptyPath) {
    EXPECT_EQ(Lookup(""), RuleAction::Ask);
    EXPECT_FALSE(std::filesystem::exists(m_file));
    EXPECT_EQ(Lookup("x"), RuleAction::Ask);
    EXPECT_TRUE(std::filesystem::exists(m_file));
    EXPECT_TRUE(LoadApplicationRules(m_file, m_clock).empty());
}

}  // namespace
}  // namespace brennvar
