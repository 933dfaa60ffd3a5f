#include "rules/RuleChanges.h"

#include <gtest/gtest.h>

#include <map>

#include "support/GoldenCipher.h"
#include "support/RuleWords.h"

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

// Rules of an enciphered file: identifiers and what is in their place, "3 allow udp".
std::string AdvancedFileOf(const std::vector<std::pair<std::uint32_t, const char*>>& rules) {
    std::string records;
    for (const auto& [id, words] : rules) {
        AdvancedRuleRecord record = EncodeRule(test::RuleIn(words));
        record.id = id;
        if (std::string_view(words) == "damaged") record.action = 9;
        records += test::BytesOf(record);
    }
    return test::EncipherByHand(records, 712);
}

TEST(RuleChangesTest, FindsAdvancedRulesByTheirIdentifiers) {
    ImportPreview preview;
    CompareAdvancedRules(
        AdvancedFileOf(
            {{1, "deny"}, {2, "allow"}, {3, "deny udp"}, {4, "deny icmp"}, {5, "deny arp"}, {7, "in"}, {7, "out"}}),
        AdvancedFileOf({{5, "deny arp"},
                        {1, "deny"},
                        {3, "allow udp"},
                        {9, "damaged"},
                        {4, "deny icmp"},
                        {7, "in"},
                        {7, "out"},
                        {7, "tcp"}}),
        preview);
    const auto told = [](const AdvancedRuleChange& change) {
        const auto state = [](const std::optional<AdvancedRule>& rule, std::size_t place) {
            return rule ? std::to_string(rule->id) + '@' + std::to_string(place) : std::string("-");
        };
        return std::to_string(static_cast<int>(change.kind)) + ' ' + state(change.before, change.placeBefore) +
               ' ' + state(change.after, change.placeAfter);
    };
    std::vector<std::string> all;
    for (const AdvancedRuleChange& change : preview.advanced) all.push_back(told(change));
    EXPECT_EQ(all, (std::vector<std::string>{"0 - 9@3", "0 - 7@7", "1 2@1 -", "2 3@2 3@2", "3 5@4 5@0"}));
    EXPECT_EQ(preview.added, 2U);
    EXPECT_EQ(preview.removed, 1U);
    EXPECT_EQ(preview.changed, 1U);
    EXPECT_EQ(preview.moved, 1U) << "the fewest that explain the order";
    EXPECT_EQ(preview.unchanged, 4U);
    EXPECT_EQ(preview.damaged, 1U);

    for (const std::string& file : {std::string(712, 'x'), AdvancedFileOf({{1, "deny"}}) + 'x'}) {
        preview = {};
        CompareAdvancedRules(AdvancedFileOf({{1, "deny"}}), file, preview);
        EXPECT_TRUE(preview.isUnreadable);
        EXPECT_TRUE(preview.advanced.empty());
    }
    // White space may be pasted into a description; other controls are no text.
    for (const auto& [description, isUnreadable] : {std::pair("a\tb\r\n", false), std::pair("a\vb", true)}) {
        AdvancedRule rule;
        rule.description = description;
        preview = {};
        CompareAdvancedRules("", test::EncipherByHand(test::BytesOf(EncodeRule(rule)), 712), preview);
        EXPECT_EQ(preview.isUnreadable, isUnreadable);
    }
}

}  // namespace
}  // namespace brennvar
