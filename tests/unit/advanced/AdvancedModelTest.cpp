#include "advanced/AdvancedModel.h"

#include <gtest/gtest.h>

#include <array>

#include "config/ResourceIds.h"
#include "lists/RowOrder.h"
#include "support/AdvancedRulesRig.h"
#include "support/FakeListView.h"
#include "support/RuleExchangeRig.h"
#include "support/ZipBytes.h"

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
    // What works for this row.
    [[nodiscard]] std::string Possible(int row) const {
        std::string possible;
        for (const ListAction& action : model.Actions()) possible += model.CanDo(action.id, row) ? '1' : '0';
        return possible;
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

AdvancedRule BrowserRule() {
    AdvancedRule rule = NamedRule(7, "Office");
    rule.action = AdvancedAction::Allow;
    rule.route = RuleRoute::Outgoing;
    rule.remote = {
        .kind = RuleEnd::Kind::Ipv4, .address = 0x000200C0, .mask = 0x00FFFFFF, .firstPort = 80, .lastPort = 88};
    rule.hours = RuleHours{.first = 480, .last = 1020};
    rule.program = R"(C:\Tools\browser.exe)";
    return rule;
}

TEST_F(AdvancedModelTest, ShowsTheRulesInTheirOrderWithWhatBecomesOfThem) {
    EXPECT_EQ(model.EmptyText(), "") << "nothing is known yet";
    AdvancedRule off = NamedRule(8);
    off.isEnabled = false;
    AdvancedRule damaged = NamedRule(9);
    damaged.isDamaged = true;
    AdvancedRule covered = BrowserRule();
    covered.id = 10;
    LoadRules({BrowserRule(), off, damaged, covered, NamedRule(0)});
    EXPECT_EQ(view.Row(0), "1\tAllow\tTCP out\tany\t192.0.2.0/24, port 80-88\tbrowser.exe\t8:00-17:00\tOffice");
    EXPECT_EQ(model.Program(0), R"(C:\Tools\browser.exe)");
    EXPECT_EQ(model.Program(1), std::nullopt);
    struct Row {
        std::string action;
        bool isChecked;
        Tone action_tone, tone;
    };
    const Row rows[] = {{"Allow", true, Tone::Allow, Tone::Plain},
                        {"Deny", false, Tone::Muted, Tone::Muted},
                        {"Damaged", true, Tone::Ask, Tone::Muted},
                        {"Allow, covered", true, Tone::Muted, Tone::Muted},
                        {"Deny", true, Tone::Deny, Tone::Plain}};
    for (int row = 0; row < model.RowCount(); ++row) {
        SCOPED_TRACE(row);
        const ListCell cell = model.Cell(row, AdvancedModel::kActionColumn);
        const Row& expected = rows[static_cast<std::size_t>(row)];
        EXPECT_EQ(cell.text, expected.action);
        EXPECT_EQ(cell.checked, expected.isChecked);
        EXPECT_EQ(cell.tone, expected.action_tone);
        EXPECT_EQ(model.Cell(row, AdvancedModel::kWhatColumn).tone, expected.tone);
    }
    EXPECT_EQ(model.CellTip(3, 1),
              "Allow outgoing TCP to 192.0.2.0/24, port 80-88, for browser.exe, from 8:00 to 17:00\n"
              "It never decides. Rule 1 above it does: "
              "Allow outgoing TCP to 192.0.2.0/24, port 80-88, for browser.exe, from 8:00 to 17:00");
    EXPECT_NE(model.CellTip(4, 1).find("no identifier"), std::string::npos);
    // Edit, delete, up, down, add, undo, export, import, duplicate, on, off, switch.
    EXPECT_EQ(Possible(0), "1111101110111");
    EXPECT_EQ(Possible(1), "1111101111011");
    EXPECT_EQ(Possible(2), "1111101110001");
    EXPECT_EQ(Possible(4), "0000101110001");
    model.Do(IDC_WHY, {});
    EXPECT_EQ(view.explained.size(), 1U);
    Load({});
    EXPECT_NE(model.EmptyText().find("Add..."), std::string::npos);
    isReadable = false;
    Load({});
    EXPECT_NE(model.EmptyText().find("F5"), std::string::npos);
}

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

TEST_F(AdvancedModelTest, EveryActionDoesWhatItSays) {
    LoadRules({NamedRule(1), NamedRule(2), NamedRule(3), NamedRule(4)});
    editor.answer = NamedRule(0, "written");
    struct Row {
        int action;
        std::vector<int> rows;
        std::string sent, shown;
    };
    const Row rows[] = {
        {IDC_ADVANCED_DISABLE, {0, 1}, "5 5 7", "1- 2- 3 4"}, {SwitchAction(), {1, 2}, "5 7", "1- 2 3 4"},
        {IDC_ADVANCED_ENABLE, {0}, "5 7", "1 2 3 4"},         {IDC_ADVANCED_UP, {1, 2}, "30 30 7", "2 3 1 4"},
        {IDC_ADVANCED_DOWN, {0, 1}, "31 31 7", "1 2 3 4"},    {IDC_ADVANCED_EDIT, {2}, "5 7", "1 2 3 4"},
        {IDC_ADVANCED_DELETE, {0, 3}, "6 6 7", "2 3"},        {IDC_ADVANCED_DUPLICATE, {1}, "4 7", "2 3 101"},
        {IDC_ADVANCED_ADD, {}, "4 7", "2 3 101 102"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.action);
        model.Do(row.action, row.rows);
        if (row.action == IDC_ADVANCED_EDIT) reads.Run();  // it is sent when the rule has been found again
        EXPECT_EQ(Serve(), row.sent);
        reads.RunAll();
        advanced.Read();
        reads.RunAll();
        EXPECT_EQ(Shown(), row.shown);
    }
    EXPECT_EQ(editor.opened[1].description, "written") << "the copy of the edited rule";
    EXPECT_EQ(editor.opened[1].id, 0U);
    EXPECT_EQ(model.Question(IDC_ADVANCED_DELETE, std::array{0})->text, "Delete this rule?\nDeny TCP");
    EXPECT_EQ(model.Question(IDC_ADVANCED_DELETE, std::array{0, 1})->text, "Delete the selected rules?\nRules: 2");
    EXPECT_EQ(model.Question(IDC_ADVANCED_EDIT, std::array{0}), std::nullopt);
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

TEST_F(AdvancedModelTest, TellsWhatBecameOfAChangeAndOfAnImport) {
    LoadRules({NamedRule(1)});
    model.Do(IDC_ADVANCED_DISABLE, std::array{0});
    (void)commanding.TakeRecords();
    reads.RunAll();
    EXPECT_NE(model.Summary().value_or("").find("has not stored"), std::string::npos);
    model.Read(ReadReason::Wished);
    EXPECT_EQ(model.Summary(), std::nullopt);

    for (const int action : {IDC_ADVANCED_EXPORT, IDC_ADVANCED_IMPORT}) model.Do(action, {});
    EXPECT_EQ(view.commands, (std::vector<int>{IDM_EXPORT_ADVANCED, IDM_IMPORT_ADVANCED}));
    archives.folder.Write("Rules/rules_advanced.conf", "old");
    archives.dialogs.path = archives.folder.Write(
        "in.fxz", test::ZipBytes({test::StoredEntry("rules_advanced.conf", std::string(712, 'n'))}));
    archives.exchange.Import(RuleSet::Advanced);
    EXPECT_FALSE(model.CanDo(IDC_ADVANCED_IMPORT, -1)) << "one at a time";
    EXPECT_TRUE(model.Progress().has_value());
    archives.queue.RunAll();
    archives.commanding.Settle();
    EXPECT_NE(model.Summary().value_or("").find("Undo"), std::string::npos);
    EXPECT_TRUE(model.CanDo(IDC_ADVANCED_UNDO, -1));
    EXPECT_EQ(model.Question(IDC_ADVANCED_UNDO, {}), std::nullopt) << "what was done a moment ago is plain";
    model.Do(IDC_ADVANCED_UNDO, {});
    archives.queue.RunAll();
    EXPECT_EQ(archives.folder.Read("Rules/rules_advanced.conf"), "old");
}

}  // namespace
}  // namespace brennvar
