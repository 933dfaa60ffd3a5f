#include "commands/Commander.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "support/CommanderRig.h"

namespace brennvar {
namespace {

using test::FakePassword;

TEST(CommandTableTest, ProtectsWhatChangesProtection) {
    using enum UserCommand;
    const std::set<UserCommand> free = {Start,         PasswordEntered, PasswordRefused,    EndTimedMode,
                                        SwitchNetwork, ReloadNetwork,   ReportClockSetBack, ReportClockSetAhead,
                                        SetPassword,                   // its dialog asks for the old one
                                        SetResources,  TrustProgram};  // part of an answer
    const std::set<UserCommand> confirmed = {Exit, SetResources, ResetTrusted, ResetFirewall};
    for (int number = 0; number <= static_cast<int>(kLastUserCommand); ++number) {
        const CommandInfo& info = InfoOf(static_cast<UserCommand>(number));
        EXPECT_EQ(info.isProtected, !free.contains(info.command)) << number;
        EXPECT_EQ(info.question.number != 0, confirmed.contains(info.command)) << number;
    }
}

TEST(CommanderTest, SendsAProtectedBatchOnlyWhenItIsAllowed) {
    test::CommanderRig rig;
    std::string order;
    const auto send = [&] {
        order.clear();
        rig.commander.SendProtected(Batch(UserCommand::SendTestMail), {.allowed = [&] { order += 'a'; },
                                                                       .refused = [&] { order += 'r'; },
                                                                       .sent = [&](bool) { order += 's'; }});
    };
    rig.password.answer = FakePassword::Answer::Later;
    send();
    EXPECT_TRUE(rig.TakeRecords().empty());
    rig.password.Give(true);
    EXPECT_EQ(rig.TakeRecords().size(), 2U) << "the command and its event";
    EXPECT_EQ(order, "as");
    rig.password.answer = FakePassword::Answer::Refuse;
    send();
    EXPECT_TRUE(rig.TakeRecords().empty());
    EXPECT_EQ(order, "r");
    rig.commander.SendProtected(Batch(UserCommand::SwitchNetwork));
    EXPECT_EQ(rig.TakeRecords().size(), 1U);
    EXPECT_EQ(rig.password.asked, 2) << "not for what is free";
}

TEST(CommanderTest, RefusesWhatIsProtectedUntilSomebodyCanAsk) {
    test::CommanderRig rig;
    Commander unguarded(rig.link, rig.language);
    bool isRefused = false;
    unguarded.SendProtected(Batch(UserCommand::ResetFirewall), {.refused = [&] { isRefused = true; }});
    unguarded.SendProtected(Batch(UserCommand::ResetFirewall));
    EXPECT_TRUE(isRefused);
    EXPECT_TRUE(rig.TakeRecords().empty());
}

TEST(CommanderTest, TellsWhetherTheServiceWasThere) {
    test::CommanderRig rig;
    std::optional<bool> wasThere;
    rig.commander.Send(Batch(UserCommand::ReloadNetwork), [&](bool there) { wasThere = there; });
    rig.Settle();
    EXPECT_EQ(wasThere, true);
    rig.commander.SetFilterPort(8080, [&](bool there) { wasThere = there; });
    EXPECT_EQ(rig.TakeRecords().size(), 2U);
    rig.Pipe().failingWaits = 1;  // the queue is called on once
    rig.commander.SetFilterPort(8080, [&](bool there) { wasThere = there; });
    rig.Settle();
    EXPECT_EQ(wasThere, false);
    rig.Pipe().failingWaits = 1;
    rig.Pipe().waits.clear();
    rig.commander.RemoveSites({1, 2, 3}, [&](bool there) { wasThere = there; });
    rig.Settle();
    EXPECT_EQ(rig.Pipe().waits.size(), 1U) << "each of them would take long";
    rig.Pipe().outcome = PipeOutcome::TimedOut;
    rig.commander.RemoveSites({1, 2, 3}, {});
    rig.Settle();
    EXPECT_EQ(rig.Pipe().requests.size(), 1U);
}

}  // namespace
}  // namespace brennvar
