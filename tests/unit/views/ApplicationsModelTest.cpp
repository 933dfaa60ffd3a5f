#include "views/ApplicationsModel.h"

#include <gtest/gtest.h>
#include <array>

#include <thread>

#include "config/ResourceIds.h"
#include "support/CommanderRig.h"
#include "support/FakeListView.h"
#include "support/FakeTaskQueue.h"
#include "support/RuleExchangeRig.h"
#include "support/ZipBytes.h"

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
    // The action with a key; 0: the one that a click into this column is.
    [[nodiscard]] int ActionOf(ListKey key) const {
        for (const ListAction& action : model.Actions()) {
            if (action.key == key) return action.id;
        }
        return 0;
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

TEST_F(ApplicationsModelTest, FindsAPathInAnySpelling) {
    Load({Rule("C:\\B.exe", Deny), Rule("C:\\Tools\\A.exe", Deny), Rule("c:\\tools\\a.EXE", Allow)});
    EXPECT_EQ(model.FindRow("c:\\tools\\a.exe"), 1) << "the first one counts";
    EXPECT_EQ(model.FindRow("c:\\tools\\a.ex"), -1);
}

TEST_F(ApplicationsModelTest, ShowsTheRulesWithTheirTones) {
    EXPECT_EQ(model.EmptyText(), "") << "nothing is known yet";
    stored = {Rule("a", Deny), Rule("b", Allow), Rule("c", Ask)};
    model.Read(ReadReason::Shown);
    reads.RunAll();
    EXPECT_EQ(view.TakeChanges(), "bR");
    EXPECT_NE(model.EmptyText(), "");
    EXPECT_EQ(view.Row(1), "b.exe\tb\tAllow");
    const Tone tones[] = {Tone::Deny, Tone::Allow, Tone::Ask};
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(model.Cell(row, ApplicationsModel::kActionColumn).tone, tones[row]) << row;
        EXPECT_EQ(model.Cell(row, ApplicationsModel::kPathColumn).tone, Tone::Plain) << row;
    }
    EXPECT_EQ(model.Columns()[ApplicationsModel::kActionColumn].longest,
              (std::vector<std::string>{"Deny", "Allow", "Ask"}));
    EXPECT_EQ(model.Program(2), "c");
    const RowDetails details = model.Details(2);
    EXPECT_EQ(details.title + "|" + details.text + "|" + details.program.value_or(""), "c.exe|c|c");
}

TEST_F(ApplicationsModelTest, ClickAndSpaceGoRoundAndTellTheOwner) {
    Load({Rule("a", Deny), Rule("b", Allow), Rule("", Ask)});
    const int next = model.Columns()[ApplicationsModel::kActionColumn].clickAction;
    EXPECT_EQ(ActionOf(ListKey::Space), next);
    for (const char* const shown : {"Ask", "Allow", "Deny"}) {
        Do(next, {0});
        EXPECT_EQ(model.Cell(0, ApplicationsModel::kActionColumn).text, shown);
    }
    EXPECT_EQ(view.commands, (std::vector<int>{IDM_APPLICATION_ASK, IDM_APPLICATION_ALLOW, IDM_APPLICATION_DENY}));
    EXPECT_EQ(view.TakeChanges(), "bLbLbL") << "the rows stay where they are";
    EXPECT_EQ(view.wake, kWritingPause);
    EXPECT_EQ(changes.Last(), 3U);
    Do(next, {2});
    EXPECT_EQ(changes.Last(), 3U) << "a rule without a path has no program";
    Do(ActionOf(ListKey::Delete), {1});
    EXPECT_EQ(Shown(), "a:Deny b: :Ask ");
    EXPECT_EQ(model.Cell(1, ApplicationsModel::kNameColumn).tone, Tone::Muted);
    Do(next, {1});
    EXPECT_EQ(changes.Last(), 4U) << "what is leaving is not clicked any more";
}

TEST_F(ApplicationsModelTest, ActionsChangeEachPathOnceAndRemovalOfSeveralIsAskedFor) {
    Load({Rule("a", Deny), Rule("b", Deny), Rule("a", Deny)});
    Do(IDC_APPLICATIONS_ALLOW, {0, 1, 2});
    EXPECT_EQ(changes.Last(), 2U);
    EXPECT_EQ(view.commands, (std::vector<int>{IDM_APPLICATION_ALLOW}));
    EXPECT_EQ(Shown(), "a:Allow b:Allow a:Allow ");
    EXPECT_EQ(model.Question(IDC_APPLICATIONS_REMOVE, std::array{0}), std::nullopt);
    EXPECT_EQ(model.Question(IDC_APPLICATIONS_ALLOW, std::array{0, 1}), std::nullopt);
    const auto question = model.Question(IDC_APPLICATIONS_REMOVE, std::array{0, 1});
    ASSERT_TRUE(question.has_value());
    EXPECT_EQ(question->text, "Remove the rules of the selected applications?\nApplications: 2");
    EXPECT_EQ(question->yes, "Remove");
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
    rig.password.answer = test::FakePassword::Answer::Refuse;
    changes.Carry();
    rig.Settle();
    view.Wake();
    model.Read(ReadReason::Wished);
    reads.RunAll();
    EXPECT_EQ(Shown(), "new:Deny b:Allow a:Deny ") << "refused, and then as the file has it";
}

TEST_F(ApplicationsModelTest, MissingServiceShowsWhatIsStoredAtOnce) {
    Load({Rule("a", Deny)});
    Do(IDC_APPLICATIONS_ASK, {0});
    rig.Pipe().failingWaits = test::FakePipe::kAlways;
    rig.commander.Send(Batch(UserCommand::SendTestMail));
    while (rig.link.Service() != PeerState::Missing) std::this_thread::yield();
    changes.Carry();
    view.Wake();
    reads.RunAll();
    EXPECT_EQ(Shown(), "a:Deny ");
    EXPECT_EQ(changes.Over(), changes.Last()) << "what is shown as not stored is given up";
}

TEST_F(ApplicationsModelTest, TakesTheLastRemovalBack) {
    const auto sent = [this] {
        std::string actions;
        for (const test::RawBytes& record : rig.TakeRecords()) {
            actions += std::string(1, static_cast<char>(record[132]));
            actions += std::to_string(static_cast<unsigned>(record[644])) + " ";
        }
        return actions;
    };
    Load({Rule("a", Deny), Rule("b", Allow), Rule("a", Allow), Rule("c", Ask)});
    EXPECT_FALSE(model.CanDo(IDC_APPLICATIONS_UNDO, -1));
    EXPECT_EQ(model.Summary(), std::nullopt);
    (void)view.TakeChanges();
    Do(IDC_APPLICATIONS_REMOVE, {0, 1, 2});
    EXPECT_TRUE(model.CanDo(IDC_APPLICATIONS_UNDO, -1));
    EXPECT_EQ(model.Summary(), "Rules removed: 2. 'Undo' brings them back.");
    EXPECT_EQ(view.TakeChanges(), "bLsp");
    changes.Carry();
    EXPECT_EQ(sent(), "a3 b3 ");
    stored = {Rule("c", Ask)};
    view.Wake();
    reads.RunAll();
    EXPECT_TRUE(model.CanDo(IDC_APPLICATIONS_UNDO, -1));
    EXPECT_EQ(model.Question(IDC_APPLICATIONS_UNDO, {}), std::nullopt);
    Do(IDC_APPLICATIONS_UNDO, {});
    EXPECT_EQ(model.Summary(), std::nullopt);
    changes.Carry();
    EXPECT_EQ(sent(), "a0 b1 ") << "the first record of a path is the one that counted";
    stored = {Rule("A", Deny), Rule("b", Allow), Rule("c", Ask)};
    view.Wake();
    reads.RunAll();
    EXPECT_FALSE(model.CanDo(IDC_APPLICATIONS_UNDO, -1)) << "they are there again";
    // A removal that did not come about cannot be taken back.
    Do(IDC_APPLICATIONS_REMOVE, {0});
    rig.password.answer = test::FakePassword::Answer::Refuse;
    changes.Carry();
    rig.Settle();
    view.Wake();
    reads.RunAll();
    EXPECT_FALSE(model.CanDo(IDC_APPLICATIONS_UNDO, -1));
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
    // One that comes about does.
    stored = {Rule("d", Ask), Rule("B", Deny), Rule("a", Deny)};
    view.Wake();
    reads.RunAll();
    EXPECT_EQ(model.Summary(), "Rules removed: 1. 'Undo' brings them back.") << "c is not there yet";
    Do(IDC_APPLICATIONS_REMOVE, {0, 1});
    carry(Answer::Allow, {Rule("a", Deny)});
    EXPECT_EQ(model.Summary(), "Rules removed: 2. 'Undo' brings them back.");
    Do(IDC_APPLICATIONS_UNDO, {});
    carry(Answer::Allow, {Rule("a", Deny), Rule("b", Deny), Rule("d", Ask)});
    EXPECT_EQ(model.Summary(), std::nullopt) << "the one before it is not kept";
}

TEST_F(ApplicationsModelTest, TellsOfImportsAndTakesThemBack) {
    Load({Rule("a", Deny)});
    Do(IDC_APPLICATIONS_IMPORT, {});
    Do(IDC_APPLICATIONS_EXPORT, {});
    EXPECT_EQ(view.commands, (std::vector<int>{IDM_IMPORT_RULES, IDM_EXPORT_RULES}));
    archives.folder.Write("Rules/rules.conf", "old");
    archives.dialogs.path =
        archives.folder.Write("in.fxz", test::ZipBytes({test::StoredEntry("rules.conf", "new")}));
    archives.exchange.Import(RuleSet::Applications);
    EXPECT_TRUE(model.Progress().has_value());
    EXPECT_FALSE(model.CanDo(IDC_APPLICATIONS_EXPORT, -1));
    archives.queue.RunAll();
    archives.commanding.Settle();
    archives.queue.RunAll();
    EXPECT_EQ(model.Progress(), std::nullopt);
    EXPECT_TRUE(model.CanDo(IDC_APPLICATIONS_UNDO, -1));
    EXPECT_EQ(model.Question(IDC_APPLICATIONS_UNDO, {}), std::nullopt) << "it is plain what";
    EXPECT_EQ(model.Summary(), "The rules have been imported. 'Undo' brings back what was there before.");
    EXPECT_EQ(view.wake, kWritingPause);
    view.Wake();
    EXPECT_EQ(reads.Waiting(), 1U) << "the rules are read again";
    reads.RunAll();
    // What is removed after it is taken back first.
    Do(IDC_APPLICATIONS_REMOVE, {0});
    Do(IDC_APPLICATIONS_UNDO, {});
    EXPECT_EQ(archives.folder.Read("Rules/rules.conf"), "new");
    Do(IDC_APPLICATIONS_UNDO, {});
    EXPECT_EQ(archives.queue.Waiting(), 0U) << "while that is under way the import stays";
    changes.Carry();
    rig.Settle();
    view.Wake();
    reads.RunAll();
    Do(IDC_APPLICATIONS_UNDO, {});
    archives.queue.RunAll();
    EXPECT_EQ(archives.folder.Read("Rules/rules.conf"), "old");
    EXPECT_EQ(model.Summary(), "The rules from before the import are back. 'Undo' imports them again.");
}

}  // namespace
}  // namespace brennvar
