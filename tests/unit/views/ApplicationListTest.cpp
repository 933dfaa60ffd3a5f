#include "views/ApplicationList.h"

#include <gtest/gtest.h>

#include "support/CommanderRig.h"
#include "views/ApplicationChanges.h"
#include "views/IconCache.h"

namespace brennvar {
namespace {

using enum ApplicationState;
using Order = ApplicationList::Order;

ApplicationRow Row(const std::string& path, ApplicationState state) {
    return {.name = path, .path = path, .state = state};
}

std::string Shown(const ApplicationList& list) {
    std::string shown;
    for (int row = 0; row < list.Count(); ++row) {
        shown +=
            list.Row(row).path + (list.IsLeaving(row) ? "-" : std::to_string(static_cast<int>(list.StateOf(row))));
    }
    return shown;
}

TEST(ApplicationListTest, ClicksGoRound) {
    EXPECT_EQ(NextState(Deny), Ask);
    EXPECT_EQ(NextState(Ask), Allow);
    EXPECT_EQ(NextState(Allow), Deny);
    EXPECT_EQ(NextState(static_cast<ApplicationState>(7)), Allow) << "shown as Ask";
}

TEST(ApplicationListTest, ChangesAreShownUntilTheyAreOverAndThenWhatIsStored) {
    ApplicationList list;
    EXPECT_TRUE(list.Take({Row("a", Deny), Row("b", Deny), Row("c", Ask)}, 0, Order::AsRead));
    list.Change(0, RuleCommandAction::Ask, 1);
    list.Change(1, RuleCommandAction::Remove, 2);
    list.Change(0, RuleCommandAction::Allow, 3);
    EXPECT_EQ(Shown(list), "a1b-c2");
    // The service has stored the first one, and has moved the row; what came after it is still under way.
    EXPECT_FALSE(list.Take({Row("b", Deny), Row("c", Ask), Row("a", Ask)}, 1, Order::Kept));
    EXPECT_EQ(Shown(list), "a1b-c2");
    // It has stored the removal, has refused the rest, and has got a rule from somewhere else.
    EXPECT_TRUE(list.Take({Row("d", Deny), Row("c", Ask), Row("a", Ask)}, 3, Order::Kept));
    EXPECT_EQ(Shown(list), "a2c2d0");
    EXPECT_TRUE(list.Take({Row("d", Deny), Row("c", Ask), Row("a", Ask)}, 3, Order::AsRead));
    EXPECT_EQ(Shown(list), "d0c2a2");
}

TEST(ApplicationListTest, EachRecordOfAPathHasItsRow) {
    ApplicationList list;
    list.Take({Row("a", Deny), Row("b", Deny), Row("a", Allow)}, 0, Order::AsRead);
    list.Change(2, RuleCommandAction::Ask, 1);
    EXPECT_EQ(Shown(list), "a2b0a2") << "a change is one of the path";
    list.Take({Row("a", Allow), Row("a", Ask), Row("a", Deny), Row("b", Deny)}, 1, Order::Kept);
    EXPECT_EQ(Shown(list), "a1b0a2a0");
}

// The user answers when he is told to; the service takes everything.
struct ChangesFixture {
    test::CommanderRig rig;
    ApplicationChanges changes{rig.commander};

    ChangesFixture() { rig.password.answer = test::FakePassword::Answer::Later; }
    void Click(RuleCommandAction action) {
        changes.Add({"a", action});
        changes.Carry();
    }
    // Path and action of each change that was sent since the last call; other commands by their code.
    std::string Sent() {
        std::string text;
        for (const test::RawBytes& record : rig.TakeRecords()) {
            if (record[0] == std::byte{22}) text += reinterpret_cast<const char*>(&record[132]);
            text += std::to_string(std::to_integer<int>(record[record[0] == std::byte{22} ? 644 : 0])) + " ";
        }
        return text;
    }
};

TEST(ApplicationChangesTest, QuickClicksAreAskedForOnceAndArriveInOrder) {
    ChangesFixture fixture;
    ApplicationChanges& changes = fixture.changes;
    int over = 0;
    changes.onOver = [&] { ++over; };
    changes.Carry();  // nothing to carry
    for (const auto action : {RuleCommandAction::Ask, RuleCommandAction::Allow, RuleCommandAction::Deny}) {
        fixture.Click(action);
    }
    EXPECT_EQ(fixture.rig.password.asked, 1);
    fixture.rig.password.Give(true);
    EXPECT_EQ(changes.Over(), 0U);
    EXPECT_EQ(fixture.Sent(), "a2 a1 a0 ");
    EXPECT_EQ(changes.Over(), changes.Last());
    EXPECT_EQ(over, 1);
}

TEST(ApplicationChangesTest, WhatIsRefusedIsOverBehindWhatIsBeingSent) {
    ChangesFixture fixture;
    fixture.Click(RuleCommandAction::Ask);
    fixture.rig.password.Give(true);
    fixture.Click(RuleCommandAction::Remove);
    fixture.rig.password.Give(false);
    EXPECT_EQ(fixture.changes.Over(), 0U);
    EXPECT_EQ(fixture.Sent(), "a2 ");
    EXPECT_EQ(fixture.changes.Over(), 2U);
    fixture.Click(RuleCommandAction::Deny);  // the next one is asked for again
    fixture.rig.password.Give(true);
    EXPECT_EQ(fixture.Sent(), "a0 ");
}

TEST(ApplicationChangesTest, ManyGoInPiecesThatOthersComeBetween) {
    ChangesFixture fixture;
    std::string piece;
    for (std::size_t i = 0; i < ApplicationChanges::kPiece; ++i) {
        fixture.changes.Add({"a", RuleCommandAction::Deny});
        piece += "a0 ";
    }
    fixture.Click(RuleCommandAction::Allow);
    fixture.rig.password.Give(true);
    fixture.rig.commander.Send(Batch(UserCommand::ReloadNetwork));
    fixture.Click(RuleCommandAction::Ask);
    fixture.rig.password.Give(true);
    EXPECT_EQ(fixture.Sent(), piece + "7 a1 a2 ");
    EXPECT_EQ(fixture.changes.Over(), fixture.changes.Last());
}

TEST(IconCacheTest, ReadsTheLastOnesFirstAndKeepsTheLastUsed) {
    IconCache<std::string> icons(2, 3);
    const auto load = [&] {
        const std::optional<std::string> path = icons.NextWanted();
        if (path) icons.Put(*path + "!");
        return path.value_or("none");
    };
    for (const char* path : {"a", "b", "c", "b", "d"}) EXPECT_EQ(icons.Find(path), nullptr);
    for (const char* path : {"d", "b", "c", "none"}) EXPECT_EQ(load(), path) << "a has scrolled away";
    EXPECT_EQ(icons.Count(), 2U);
    ASSERT_NE(icons.Find("b"), nullptr);
    EXPECT_EQ(*icons.Find("b"), "b!");
    EXPECT_EQ(icons.Find("d"), nullptr) << "the first of three to be used";
    EXPECT_EQ(icons.NextWanted(), "d");
    EXPECT_EQ(icons.Find("d"), nullptr);
    EXPECT_EQ(icons.NextWanted(), std::nullopt) << "one at a time";
    icons.Put("late");
    EXPECT_EQ(icons.Find("c"), nullptr) << "b was used after it";
    EXPECT_EQ(*icons.Find("d"), "late");
}

}  // namespace
}  // namespace brennvar
