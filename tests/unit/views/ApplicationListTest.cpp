#include "views/ApplicationList.h"

#include <gtest/gtest.h>

#include "support/CommanderRig.h"
#include "views/ApplicationChanges.h"

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

class ApplicationChangesTest : public testing::Test, protected ApplicationChangesWatcher {
protected:
    test::CommanderRig rig;
    ApplicationChanges changes{rig.commander};
    std::vector<std::uint64_t> over;  // as it was told

    void SetUp() override {
        changes.Watch(*this);
        rig.password.answer = test::FakePassword::Answer::Later;
    }
    void OnChangesOver() override { over.push_back(changes.Over()); }
    void Click(RuleCommandAction action) {
        changes.Add({"a", action});
        changes.Carry();
    }
    // What the service got, one letter per record: the values of command 22 for "a".
    [[nodiscard]] std::string Sent() {
        for (int piece = 0; piece < 3; ++piece) rig.Settle();  // each is sent when the one before it is over
        std::string sent;
        for (const test::RawBytes& record : rig.TakeRecords()) {
            const bool isChange = record.at(0) == std::byte{22} && record.at(132) == std::byte{'a'};
            sent += isChange ? static_cast<char>('0' + static_cast<int>(record.at(644))) : '?';
        }
        return sent;
    }
};

TEST_F(ApplicationChangesTest, WhatIsRefusedIsOverBehindWhatIsBeingSent) {
    Click(RuleCommandAction::Ask);
    rig.password.Give(true);
    Click(RuleCommandAction::Remove);
    rig.password.Give(false);
    EXPECT_EQ(changes.Over(), 0U);
    EXPECT_EQ(Sent(), "2");
    EXPECT_EQ(over, (std::vector<std::uint64_t>{1, 2}));
    Click(RuleCommandAction::Deny);  // the next one is asked for again
    rig.password.Give(true);
    EXPECT_EQ(Sent(), "0");
}

TEST_F(ApplicationChangesTest, ManyGoInPiecesThatOthersComeBetween) {
    for (int i = 0; i < 20; ++i) changes.Add({"a", RuleCommandAction::Deny});
    changes.Carry();
    rig.password.Give(true);
    rig.commander.Send(Batch(UserCommand::SendTestMail));
    Click(RuleCommandAction::Ask);
    rig.password.Give(true);
    EXPECT_EQ(Sent(),
              "0000000000000000"
              "??"
              "0000"
              "2")
        << "16, the other command with its event, the rest";
    EXPECT_EQ(over, (std::vector<std::uint64_t>{20, 21}));
}

TEST_F(ApplicationChangesTest, WhatIsGivenUpDoesNotArriveLater) {
    rig.password.answer = test::FakePassword::Answer::Allow;
    {
        const auto held = rig.Hold();
        Click(RuleCommandAction::Ask);
        Click(RuleCommandAction::Allow);
        changes.GiveUp();
        EXPECT_EQ(changes.Over(), 2U);
        Click(RuleCommandAction::Deny);
    }
    EXPECT_EQ(Sent(), "0");
    EXPECT_EQ(over, (std::vector<std::uint64_t>{3}));
    // Without the service the first piece tells it for all of them.
    rig.Pipe().breaksOff = true;
    rig.Pipe().waits.clear();
    for (int i = 0; i < 40; ++i) changes.Add({"a", RuleCommandAction::Deny});
    changes.Carry();
    EXPECT_EQ(Sent(), "");
    EXPECT_EQ(rig.Pipe().waits.size(), 1U);
    EXPECT_EQ(changes.Over(), 43U);
}

}  // namespace
}  // namespace brennvar
