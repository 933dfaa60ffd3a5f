#include "advanced/AdvancedRules.h"

#include <gtest/gtest.h>

#include <array>
#include <future>

#include "support/AdvancedRulesRig.h"

namespace brennvar {
namespace {

using Ids = std::vector<std::uint32_t>;
using Note = AdvancedRules::Note;
using test::NamedRule;

class AdvancedRulesTest : public testing::Test, protected test::AdvancedRulesRig, private AdvancedRulesWatcher {
protected:
    AdvancedRulesTest() { advanced.Watch(this); }
    // The service does what it was told, and the rules are read.
    std::string ServeAndRead() {
        std::string codes = Serve();
        reads.RunAll();
        return codes;
    }
    int told = 0;

private:
    void OnRulesChanged() override { ++told; }
};

TEST_F(AdvancedRulesTest, ShowsAtOnceWhatIsSentAndThenWhatIsStored) {
    Load({NamedRule(1), NamedRule(2), NamedRule(3), NamedRule(4)});
    advanced.SetEnabled(Ids{1, 3}, false);
    EXPECT_EQ(Shown(), "1- 2 3- 4");
    EXPECT_EQ(ServeAndRead(), "5 5 7");
    EXPECT_EQ(Shown(), "1- 2 3- 4");
    EXPECT_EQ(stored[0].description, "rule") << "nothing else has changed";
    advanced.SetEnabled(Ids{1, 2}, true);
    EXPECT_EQ(Serve(), "5 7") << "only what is otherwise";
    advanced.Delete(Ids{4, 2, 99});
    EXPECT_EQ(Serve(), "6 6 7");
    // Faster than anything is stored: each goes on from what is shown.
    for (int step = 0; step < 3; ++step) advanced.MoveBy(Ids{1}, 1);
    EXPECT_EQ(Shown(), "3- 1");
    EXPECT_EQ(ServeAndRead(), "31 7") << "there is one place only";
    EXPECT_EQ(Shown(), "3- 1");
    EXPECT_EQ(AdvancedRulesRig::Listed(stored), Shown());
    EXPECT_EQ(advanced.LastNote(), Note::None);
    EXPECT_EQ(clock.elapsed % kWritingPause, std::chrono::milliseconds(0));
    EXPECT_EQ(reads.Waiting(), 0U);
}

TEST_F(AdvancedRulesTest, MovesSeveralAndKeepsTheirOrder) {
    Load({NamedRule(1), NamedRule(2), NamedRule(3), NamedRule(4), NamedRule(5)});
    advanced.MoveBefore(Ids{1, 5}, 3);
    EXPECT_EQ(ServeAndRead(), "30 31 31 7");
    EXPECT_EQ(Shown(), "2 3 1 5 4");
    advanced.MoveBy(Ids{5, 1}, -4);
    EXPECT_EQ(ServeAndRead(), "30 30 30 30 7");
    EXPECT_EQ(AdvancedRulesRig::Listed(stored), "1 5 2 3 4");
    advanced.MoveBy(Ids{1}, -1);
    EXPECT_EQ(Serve(), "") << "it is there";

    std::vector<AdvancedRule> many;
    for (std::uint32_t id = 1; id <= 502; ++id) many.push_back(NamedRule(id));
    Load(many);
    advanced.MoveBefore(Ids{501, 502}, 0);
    EXPECT_EQ(advanced.LastNote(), Note::None) << "so many commands and no more";
    EXPECT_EQ(Serve().size(), 3U * 1000 + 1);
    reads.RunAll();
    advanced.MoveBefore(Ids{501, 502, 1}, 502);
    EXPECT_EQ(advanced.LastNote(), Note::TooFar);
    EXPECT_EQ(Serve(), "");
}

TEST_F(AdvancedRulesTest, LeavesAloneWhatNoCommandCanName) {
    AdvancedRule damaged = NamedRule(3);
    damaged.isDamaged = true;
    Load({NamedRule(0), NamedRule(2, "first"), NamedRule(2, "second"), damaged});
    EXPECT_FALSE(advanced.Shown()->HasName(0));
    EXPECT_TRUE(advanced.Shown()->HasName(1));
    EXPECT_FALSE(advanced.Shown()->HasName(2));
    advanced.SetEnabled(Ids{0, 3}, false);
    EXPECT_EQ(Serve(), "") << "a damaged one would be stored as something else";
    advanced.Delete(Ids{0, 2});
    EXPECT_EQ(ServeAndRead(), "6 7");
    EXPECT_EQ(Shown(), "0 2 3");
    EXPECT_EQ(advanced.Shown()->Rule(1).description, "second");
    EXPECT_TRUE(advanced.Shown()->HasName(1)) << "now it is the first one";
    EXPECT_EQ(advanced.LastNote(), Note::None);
    advanced.Edit(0);
    EXPECT_TRUE(editor.opened.empty());
}

TEST_F(AdvancedRulesTest, TellsWhenTheServiceDoesNotDoIt) {
    Load({NamedRule(1), NamedRule(2)});
    struct Row {
        const char* what;
        std::function<void()> change;
    };
    const Ids first{1};
    const Row rows[] = {{"switch", [&] { advanced.SetEnabled(first, false); }},
                        {"delete", [&] { advanced.Delete(first); }},
                        {"move", [&] { advanced.MoveBy(first, 1); }},
                        {"add", [&] {
                             editor.answer = NamedRule(0, "new");
                             advanced.Add({});
                         }}};
    for (const Row& row : rows) {
        row.change();
        EXPECT_NE(Shown(), "1 2") << row.what;
        EXPECT_NE(commanding.TakeRecords().size(), 0U);  // and nobody does it
        EXPECT_EQ(advanced.LastNote(), Note::None) << row.what;
        const auto since = clock.elapsed;
        reads.RunAll();
        EXPECT_EQ(Shown(), "1 2") << row.what;
        EXPECT_EQ(advanced.LastNote(), Note::Lost) << row.what;
        EXPECT_GT(clock.elapsed - since, std::chrono::seconds(1)) << "it has had its time";
    }

    commanding.Pipe().failingWaits = test::FakePipe::kAlways;
    advanced.Delete(first);
    reads.RunAll();
    EXPECT_EQ(Shown(), "1 2") << "nobody was there for two seconds";
    EXPECT_EQ(advanced.LastNote(), Note::Lost);
    advanced.Read();
    EXPECT_EQ(advanced.LastNote(), Note::None);
    EXPECT_GT(told, 0);
}

TEST_F(AdvancedRulesTest, SendsNoMoreOfWhatIsLost) {
    Load({NamedRule(1), NamedRule(2)});
    std::promise<void> go;
    commanding.link.Send([&](CommandPipe&) { go.get_future().wait(); });
    advanced.Delete(Ids{1});
    advanced.SetEnabled(Ids{2}, false);
    reads.RunAll();
    EXPECT_EQ(advanced.LastNote(), Note::Lost);
    go.set_value();
    EXPECT_EQ(ServeAndRead(), "");
    EXPECT_EQ(Shown(), "1 2");
    EXPECT_EQ(advanced.LastNote(), Note::Lost);
    // One that has begun to arrive cannot be taken back; then it is not lost.
    advanced.Delete(Ids{1});
    commanding.Settle();
    reads.RunAll();
    EXPECT_EQ(advanced.LastNote(), Note::Lost);
    EXPECT_EQ(Serve(), "6 7");
    advanced.ReadAgain([] {});
    reads.RunAll();
    EXPECT_EQ(Shown(), "2");
    EXPECT_EQ(advanced.LastNote(), Note::None);
}

TEST_F(AdvancedRulesTest, LearnsNothingFromAReadingThatFailed) {
    Load({NamedRule(1), NamedRule(2)});
    advanced.Delete(Ids{1});
    commanding.Settle();
    isReadable = false;
    reads.Run();
    EXPECT_EQ(Shown(), "2") << "neither that it is gone nor that all are";
    isReadable = true;
    reads.RunAll();
    EXPECT_EQ(Shown(), "1 2");
    EXPECT_EQ(advanced.LastNote(), Note::Lost);
    isReadable = false;
    advanced.Read();
    reads.RunAll();
    EXPECT_FALSE(advanced.Shown()->IsReadable());
}

TEST_F(AdvancedRulesTest, WhatOthersChangeMeanwhileIsNoLoss) {
    Load({NamedRule(1), NamedRule(2), NamedRule(3), NamedRule(4)});
    advanced.MoveBy(Ids{1}, 2);
    EXPECT_EQ(Serve(), "31 31 7");
    stored[0].description = "another";
    stored.erase(stored.begin() + 1);
    stored.push_back(NamedRule(9));
    reads.RunAll();
    EXPECT_EQ(advanced.LastNote(), Note::None);
    EXPECT_EQ(Shown(), "2 1 4 9");
}

TEST_F(AdvancedRulesTest, AsksOnceForThePasswordAndTakesBackWhatIsRefused) {
    Load({NamedRule(1), NamedRule(2)});
    commanding.password.answer = test::FakePassword::Answer::Later;
    advanced.SetEnabled(Ids{1}, false);
    advanced.MoveBy(Ids{1}, 1);
    EXPECT_EQ(commanding.password.asked, 1);
    EXPECT_EQ(Shown(), "2 1-");
    advanced.Read();
    reads.RunAll();
    EXPECT_EQ(Shown(), "2 1-") << "until the user has answered";
    commanding.password.Give(false);
    EXPECT_EQ(Shown(), "1 2");
    EXPECT_EQ(Serve(), "");
    advanced.SetEnabled(Ids{1}, false);
    advanced.MoveBy(Ids{1}, 1);
    commanding.password.Give(true);
    EXPECT_EQ(ServeAndRead(), "5 7 31 7");
    EXPECT_EQ(Shown(), "2 1-");
    commanding.password.answer = test::FakePassword::Answer::Refuse;
    advanced.Add({});
    advanced.Edit(1);
    EXPECT_TRUE(editor.opened.empty());
    commanding.password.answer = test::FakePassword::Answer::Allow;
    advanced.Edit(1);
    EXPECT_EQ(editor.opened.size(), 1U) << "the refusal is over";
}

TEST_F(AdvancedRulesTest, FindsTheEditedRuleAgainOrAsks) {
    const auto rule = [this](std::uint32_t id) {
        const int row = advanced.Shown()->Find(id);
        return row < 0 ? std::string("gone") : advanced.Shown()->Rule(row).description;
    };
    struct Row {
        const char* what;
        std::function<void()> meanwhile;
        bool agrees;
        std::string said, sent, ids, rule2;
    };
    const std::string changed = "This rule has been changed by somebody else since you opened it.|Save it anyway";
    const std::string gone = "This rule has been deleted since you opened it.|Add it as a new rule";
    const Row rows[] = {
        {"nothing", [] {}, true, "", "5 7", "1 2", "mine"},
        {"moved", [this] { std::swap(stored[0], stored[1]); }, true, "", "5 7", "2 1", "mine"},
        {"changed, no", [this] { stored[1].isLogged = true; }, false, changed, "", "1 2", "rule"},
        {"changed, yes", [this] { stored[1].isLogged = true; }, true, changed, "5 7", "1 2", "mine"},
        {"gone, no", [this] { stored.pop_back(); }, false, gone, "", "1", "gone"},
        {"gone, yes", [this] { stored.pop_back(); }, true, gone, "4 7", "1 101", "gone"},
        {"not readable", [this] { isReadable = false; }, true, "", "5 7", "1 2", "mine"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        isReadable = true;
        Load({NamedRule(1), NamedRule(2)});
        editor.answer = NamedRule(7, "mine");
        editor.whileOpen = row.meanwhile;
        dialogs.agrees = row.agrees;
        advanced.Edit(2);
        EXPECT_EQ(editor.place.number, 2U);
        EXPECT_EQ(editor.place.count, 2U);
        editor.answer.reset();
        editor.whileOpen = [] {};
        advanced.Edit(1);
        EXPECT_EQ(editor.opened.back().id, 2U) << "one after the other";
        EXPECT_TRUE(advanced.IsSaving());
        reads.Run();
        EXPECT_FALSE(advanced.IsSaving());
        EXPECT_EQ(editor.opened.back().id, 1U);
        EXPECT_EQ(dialogs.TakeSaid(), row.said.empty() ? std::vector<std::string>{} : std::vector{row.said});
        EXPECT_EQ(Serve(), row.sent);
        isReadable = true;
        reads.RunAll();
        EXPECT_EQ(advanced.LastNote(), Note::None);
        advanced.Read();
        reads.RunAll();
        EXPECT_EQ(Shown(), row.ids);
        EXPECT_EQ(rule(2), row.rule2);
    }
}

TEST_F(AdvancedRulesTest, CallsBackWhenTheRulesHaveBeenReadAgain) {
    Load({NamedRule(1)});
    advanced.Read();
    stored = {NamedRule(5)};
    std::string seen;
    advanced.ReadAgain([&] { seen = Shown(); });
    advanced.Read();  // does not take the pause away
    const auto since = clock.elapsed;
    reads.Run();
    EXPECT_EQ(seen, "") << "that was asked for before";
    reads.RunAll();
    EXPECT_EQ(seen, "5");
    EXPECT_EQ(clock.elapsed - since, kWritingPause);
}

}  // namespace
}  // namespace brennvar
