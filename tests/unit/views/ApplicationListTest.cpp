#include "views/ApplicationList.h"

#include <gtest/gtest.h>

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

// A gate and a service that answer when they are told to.
struct ChangesFixture {
    std::vector<std::string> sent;
    std::function<void()> allowed, refused;
    std::vector<std::function<void()>> deliveries;
    int asked = 0;
    ApplicationChanges changes{{.ask =
                                    [this](auto yes, auto no) {
                                        ++asked;
                                        allowed = yes;
                                        refused = no;
                                    },
                                .send =
                                    [this](const auto& batch, auto done) {
                                        for (const auto& change : batch) {
                                            sent.push_back(change.path +
                                                           std::to_string(static_cast<int>(change.action)));
                                        }
                                        deliveries.push_back(done);
                                    }}};
    void Click(RuleCommandAction action) {
        changes.Add({"a", action});
        changes.Carry();
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
    EXPECT_EQ(fixture.asked, 1);
    fixture.allowed();
    EXPECT_EQ(fixture.sent, (std::vector<std::string>{"a2", "a1", "a0"}));
    EXPECT_EQ(changes.Over(), 0U);
    fixture.deliveries[0]();
    EXPECT_EQ(changes.Over(), changes.Last());
    EXPECT_EQ(over, 1);
}

TEST(ApplicationChangesTest, WhatIsRefusedIsOverBehindWhatIsBeingSent) {
    ChangesFixture fixture;
    fixture.Click(RuleCommandAction::Ask);
    fixture.allowed();
    fixture.Click(RuleCommandAction::Remove);
    fixture.refused();
    EXPECT_EQ(fixture.sent, (std::vector<std::string>{"a2"}));
    EXPECT_EQ(fixture.changes.Over(), 0U);
    fixture.deliveries[0]();
    EXPECT_EQ(fixture.changes.Over(), 1U);
    fixture.deliveries[1]();
    EXPECT_EQ(fixture.changes.Over(), 2U);
    fixture.Click(RuleCommandAction::Deny);  // the next one is asked for again
    fixture.allowed();
    EXPECT_EQ(fixture.sent, (std::vector<std::string>{"a2", "a0"}));
}

TEST(ApplicationChangesTest, ManyGoInPiecesThatOthersComeBetween) {
    ChangesFixture fixture;
    ApplicationChanges& changes = fixture.changes;
    for (std::size_t i = 0; i <= ApplicationChanges::kPiece; ++i) changes.Add({"a", RuleCommandAction::Deny});
    changes.Carry();
    fixture.allowed();
    EXPECT_EQ(fixture.sent.size(), ApplicationChanges::kPiece);
    fixture.Click(RuleCommandAction::Ask);
    fixture.allowed();
    EXPECT_EQ(fixture.deliveries.size(), 1U) << "behind the rest of the first ones";
    fixture.deliveries[0]();
    EXPECT_EQ(fixture.sent.back(), "a0");
    EXPECT_EQ(changes.Over(), 0U);
    fixture.deliveries[1]();
    EXPECT_EQ(fixture.sent.back(), "a2");
    EXPECT_EQ(changes.Over(), changes.Last() - 1);
    fixture.deliveries[2]();
    EXPECT_EQ(changes.Over(), changes.Last());
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
