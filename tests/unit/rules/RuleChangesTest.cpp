#include "rules/RuleChanges.h"

#include <gtest/gtest.h>

#include <map>

#include "support/GoldenCipher.h"

namespace brennvar {
namespace {

using enum ApplicationState;
using Kind = RuleChange::Kind;

struct Rule {
    std::string path;
    char action;  // 0 ask, 1 deny, 2 allow
};
std::string FileOf(const std::vector<Rule>& rules) {
    std::string records;
    for (const Rule& rule : rules) {
        std::string record = rule.path;
        record.resize(260, '\0');
        records += record + rule.action + std::string(3, '\0');
    }
    return test::EncipherByHand(records, 264);
}

ImportPreview Compare(const std::vector<Rule>& before, const std::vector<Rule>& after) {
    ImportPreview preview;
    CompareRules(FileOf(before), FileOf(after), preview);
    return preview;
}

TEST(RuleChangesTest, TellsEveryRuleThatWouldBeAnother) {
    const ImportPreview preview = Compare({{"a", 1}, {"b", 2}, {"C", 0}, {"d", 1}, {"a", 2}},
                                          {{"e", 7}, {"c", 2}, {"B", 2}, {"a", 1}, {"f", 2}, {"c", 1}});
    EXPECT_EQ(preview.rules,
              (std::vector<RuleChange>{{.kind = Kind::Added, .path = "e", .after = Ask},
                                       {.kind = Kind::Added, .path = "f", .after = Allow},
                                       {.kind = Kind::Removed, .path = "d", .before = Deny},
                                       {.kind = Kind::Changed, .path = "c", .before = Ask, .after = Allow}}));
    EXPECT_EQ(preview.added, 2U);
    EXPECT_EQ(preview.removed, 1U);
    EXPECT_EQ(preview.changed, 1U);
    EXPECT_EQ(preview.unchanged, 2U);
    EXPECT_FALSE(preview.isUnreadable);
    EXPECT_EQ(Compare({}, {}).rules.size(), 0U);
}

TEST(RuleChangesTest, RulesUnderAnotherKeyOrCutShortAreNone) {
    ImportPreview preview;
    CompareRules(FileOf({{"a", 1}}), std::string(264, 'x'), preview);
    EXPECT_TRUE(preview.isUnreadable);
    EXPECT_EQ(preview.removed, 0U) << "nothing is told of them";
    preview = {};
    CompareRules({}, FileOf({{"a", 1}, {"b", 1}}).substr(0, 527), preview);
    EXPECT_TRUE(preview.isUnreadable);
}

TEST(RuleChangesTest, OtherFilesAreTheirNamesAndSizes) {
    class Memory final : public CurrentFiles {
    public:
        std::map<std::string, std::string> files;
        std::optional<std::string> Content(const std::string& path) override {
            const auto found = files.find(path);
            return found == files.end() ? std::nullopt : std::optional(found->second);
        }
    } current;
    current.files = {{"Rules.conf", FileOf({{"a", 1}})}, {"b.conf", "12"}, {"gone.conf", "123"}};
    ImportPlan plan{.files = {{.path = "Rules.conf", .content = FileOf({{"a", 2}})},
                              {.path = "b.conf", .content = "1234"},
                              {.path = "new.conf", .content = ""},
                              {.path = "gone.conf", .isRemoved = true}},
                    .skipped = 3};
    const ImportPreview preview = PreviewImport(plan, current);
    EXPECT_EQ(preview.changed, 1U);
    EXPECT_EQ(preview.files, (std::vector<FileChange>{{.path = "b.conf", .before = 2, .after = 4},
                                                      {.path = "new.conf", .before = std::nullopt, .after = 0},
                                                      {.path = "gone.conf", .before = 3, .after = std::nullopt}}));
    EXPECT_EQ(preview.skipped, 3U);
}

}  // namespace
}  // namespace brennvar
