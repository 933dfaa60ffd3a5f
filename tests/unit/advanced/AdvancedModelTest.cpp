#include "advanced/AdvancedModel.h"

#include <gtest/gtest.h>

#include <array>

#include "config/ResourceIds.h"
#include "lists/RowOrder.h"
#include "support/AdvancedRulesRig.h"
#include "support/FakeListView.h"
#include "support/RuleExchangeRig.h"

namespace brennvar {
namespace {

using test::NamedRule;

class AdvancedModelTest : public testing::Test, protected test::AdvancedRulesRig {
protected:
    void LoadRules(std::vector<AdvancedRule> rules) {
        Load(std::move(rules));
        covering.RunAll();
        (void)view.TakeChanges();
    }
    [[nodiscard]] int SwitchAction() const { return model.Columns()[AdvancedModel::kActionColumn].checkAction; }

    test::FakeTaskQueue covering;
    test::RuleExchangeRig archives;
    StopSignal stop;
    AdvancedModel model{{.language = commanding.language,
                         .rules = advanced,
                         .exchange = archives.exchange,
                         .queue = covering,
                         .stop = stop}};
    test::FakeListView view{model};
};

TEST_F(AdvancedModelTest, MarksStayWhileTheyAreFoundAnew) {
    LoadRules({NamedRule(1), NamedRule(2)});
    const auto action = [this](int row) { return model.Cell(row, AdvancedModel::kActionColumn).text; };
    EXPECT_EQ(action(1), "Deny, covered");
    model.Do(SwitchAction(), std::array{0});
    EXPECT_EQ(view.TakeChanges(), "bL") << "the rows stay where they are";
    EXPECT_EQ(action(1), "Deny, covered") << "not known better yet";
    covering.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bL");
    EXPECT_EQ(action(1), "Deny");
    model.Do(IDC_ADVANCED_DOWN, std::array{0});
    EXPECT_EQ(view.TakeChanges(), "bR");
    EXPECT_EQ(Shown(), "2 1-");
    const auto searched = [this](int row) { return std::string(model.SearchedText(row).value_or("none")); };
    EXPECT_EQ(searched(0), "none") << "texts of other rules";
    covering.RunAll();
    using namespace std::string_literals;
    EXPECT_EQ(searched(0), "1\0deny\0tcp\0any\0any\0any\0always\0rule\0"s);
    EXPECT_EQ(searched(1), "2\0deny\0tcp\0any\0any\0any\0always\0rule\0"s);
    // What was found of the rules before these comes too late.
    model.Do(SwitchAction(), std::array{1});
    model.Do(IDC_ADVANCED_UP, std::array{1});
    covering.Run();
    EXPECT_EQ(action(0), "Deny");
    EXPECT_EQ(searched(1), "none");
    covering.RunAll();
    EXPECT_EQ(action(1), "Deny, covered");
    EXPECT_NE(searched(1).find("\0deny, covered\0"s), std::string::npos);
}

TEST_F(AdvancedModelTest, KeysNameRulesAlsoWhereIdentifiersRepeat) {
    LoadRules({NamedRule(3), NamedRule(0), NamedRule(3), NamedRule(0), NamedRule(1), NamedRule(3)});
    std::string keys;
    for (int row = 0; row < model.RowCount(); ++row) keys += model.Key(row) + ' ';
    EXPECT_EQ(keys, "3 0 3#1 0#1 1 3#2 ");
}

TEST_F(AdvancedModelTest, MovesOnlyInTheOrderOfTheRules) {
    LoadRules({NamedRule(1), NamedRule(2), NamedRule(3)});
    struct Row {
        RowOrder order;
        bool canMove;
    };
    const Row rows[] = {{{.searched = "x"}, false},
                        {{.searched = "", .column = AdvancedModel::kWhatColumn}, false},
                        {{.searched = "", .column = AdvancedModel::kNumberColumn, .isAscending = false}, false},
                        {{.searched = "", .column = AdvancedModel::kNumberColumn}, true},
                        {{}, true}};
    for (const Row& row : rows) {
        model.OnOrder(row.order);
        EXPECT_EQ(model.CanDo(IDC_ADVANCED_UP, 1), row.canMove);
        EXPECT_EQ(model.CanDo(IDC_ADVANCED_DOWN, 1), row.canMove);
        EXPECT_EQ(model.CanDragRows(), row.canMove);
        EXPECT_EQ(model.Summary().has_value(), !row.canMove) << "why";
    }
    model.DragRows(std::array{0, 1}, 3);
    EXPECT_EQ(Shown(), "3 1 2");
    EXPECT_EQ(Serve(), "31 31 7");
}

}  // namespace
}  // namespace brennvar
