#include "views/ApplicationsModel.h"

#include <gtest/gtest.h>

#include <array>

#include "config/ResourceIds.h"
#include "support/CommanderRig.h"
#include "support/FakeListView.h"
#include "support/FakeTaskQueue.h"
#include "support/RuleExchangeRig.h"

namespace brennvar {
namespace {

using enum ApplicationState;

ApplicationRow Rule(const std::string& path, ApplicationState state) {
    return {.name = path + ".exe", .path = path, .state = state};
}

class ApplicationsModelTest : public testing::Test {
protected:
    test::CommanderRig rig;
    test::FakeTaskQueue reads;
    ApplicationChanges changes{rig.commander};
    std::vector<ApplicationRow> stored;
    test::RuleExchangeRig archives;
    ApplicationsModel model{rig.language, reads, [this] { return stored; }, changes, rig.link, archives.exchange};
    test::FakeListView view{model};

    void Load(std::vector<ApplicationRow> rules) {
        stored = std::move(rules);
        model.Read(ReadReason::Shown);
        reads.RunAll();
        (void)view.TakeChanges();
    }
    void Do(int action, const std::vector<int>& rows) { model.Do(action, rows); }
    [[nodiscard]] std::string Shown() const {
        std::string shown;
        for (int row = 0; row < model.RowCount(); ++row) {
            shown += model.Key(row);
            shown += ':';
            shown += model.Cell(row, ApplicationsModel::kActionColumn).text;
            shown += ' ';
        }
        return shown;
    }
};

TEST_F(ApplicationsModelTest, ClicksGoRoundAndTellTheOwner) {
    Load({Rule("a", Deny), Rule("b", Allow), Rule("", Ask)});
    const int next = model.Columns()[ApplicationsModel::kActionColumn].clickAction;
    for (const char* const shown : {"Ask", "Allow", "Deny"}) {
        Do(next, {0});
        EXPECT_EQ(model.Cell(0, ApplicationsModel::kActionColumn).text, shown);
    }
    EXPECT_EQ(view.commands, (std::vector<int>{IDM_APPLICATION_ASK, IDM_APPLICATION_ALLOW, IDM_APPLICATION_DENY}));
    EXPECT_EQ(view.wake, kWritingPause);
    EXPECT_EQ(changes.Last(), 3U);
    Do(next, {2});
    EXPECT_EQ(changes.Last(), 3U) << "a rule without a path has no program";
    Do(IDC_APPLICATIONS_REMOVE, {1});
    EXPECT_EQ(Shown(), "a:Deny b: :Ask ");
    Do(next, {1});
    EXPECT_EQ(changes.Last(), 4U) << "what is leaving is not clicked any more";
}

TEST_F(ApplicationsModelTest, ActionsChangeEachPathOnceAndRemovalOfSeveralIsAskedFor) {
    Load({Rule("a", Deny), Rule("b", Deny), Rule("a", Deny)});
    Do(IDC_APPLICATIONS_ALLOW, {0, 1, 2});
    EXPECT_EQ(changes.Last(), 2U);
    EXPECT_EQ(Shown(), "a:Allow b:Allow a:Allow ");
    EXPECT_FALSE(model.Question(IDC_APPLICATIONS_REMOVE, std::array{0}));
    EXPECT_TRUE(model.Question(IDC_APPLICATIONS_REMOVE, std::array{0, 1}));
}

TEST_F(ApplicationsModelTest, WhatWasClickedStaysUntilTheServiceHasHadTheTimeToStoreIt) {
    Load({Rule("a", Deny), Rule("b", Deny)});
    rig.password.answer = test::FakePassword::Answer::Later;
    Do(IDC_APPLICATIONS_ASK, {1});
    changes.Carry();
    // Whatever is read meanwhile: neither the change nor the order is taken back.
    stored = {Rule("new", Deny), Rule("b", Deny), Rule("a", Deny)};
    model.Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(Shown(), "a:Deny b:Ask new:Deny ");
    view.Wake();
    EXPECT_EQ(reads.Waiting(), 0U) << "the user is still asked";
    EXPECT_EQ(view.wake, kWritingPause);
    view.wake.reset();
    rig.password.Give(true);
    rig.Settle();
    EXPECT_EQ(view.wake, kWritingPause) << "from the delivery on";
    stored[1].state = Allow;
    view.Wake();
    reads.RunAll();
    EXPECT_EQ(Shown(), "a:Deny b:Allow new:Deny ");
    // What was clicked during the reading is not taken back by it.
    model.Read(ReadReason::RulesChanged);
    reads.DoTask();
    Do(IDC_APPLICATIONS_DENY, {1});
    reads.Complete();
    EXPECT_EQ(Shown(), "a:Deny b:Deny new:Deny ");
}

TEST_F(ApplicationsModelTest, ARemovalCanBeTakenBackUntilItsRulesAreThereAgain) {
    const auto carry = [this](test::FakePassword::Answer answer, std::vector<ApplicationRow> rows) {
        rig.password.answer = answer;
        changes.Carry();
        rig.Settle();
        stored = std::move(rows);
        view.Wake();
        reads.RunAll();
    };
    using Answer = test::FakePassword::Answer;
    Load({Rule("a", Deny), Rule("b", Allow), Rule("c", Ask), Rule("d", Ask)});
    Do(IDC_APPLICATIONS_REMOVE, {0, 1, 2});
    carry(Answer::Allow, {Rule("d", Ask)});
    EXPECT_EQ(model.Summary(), "Rules removed: 3. 'Undo' brings them back.");
    // Refused: it can be tried again.
    Do(IDC_APPLICATIONS_UNDO, {});
    EXPECT_FALSE(model.CanDo(IDC_APPLICATIONS_UNDO, -1)) << "under way";
    const std::uint64_t last = changes.Last();
    Do(IDC_APPLICATIONS_UNDO, {});
    EXPECT_EQ(changes.Last(), last) << "once is enough";
    carry(Answer::Refuse, {Rule("d", Ask)});
    EXPECT_TRUE(model.CanDo(IDC_APPLICATIONS_UNDO, -1));
    // A removal that is refused does not take the place of one that came about.
    Do(IDC_APPLICATIONS_REMOVE, {0});
    EXPECT_EQ(model.Summary(), "Rules removed: 1. 'Undo' brings them back.");
    carry(Answer::Refuse, {Rule("d", Ask)});
    EXPECT_EQ(model.Summary(), "Rules removed: 3. 'Undo' brings them back.");
    // What somebody has given a rule again is not overwritten.
    stored = {Rule("d", Ask), Rule("B", Deny)};
    model.Read(ReadReason::RulesChanged);
    reads.RunAll();
    EXPECT_EQ(model.Summary(), "Rules removed: 2. 'Undo' brings them back.");
    (void)rig.TakeRecords();
    Do(IDC_APPLICATIONS_UNDO, {});
    rig.password.answer = Answer::Allow;
    changes.Carry();
    EXPECT_EQ(rig.TakeRecords().size(), 2U) << "a and c";
}

}  // namespace
}  // namespace brennvar
