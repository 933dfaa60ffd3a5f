#include "commands/Commander.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "commands/NetworkSwitch.h"
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
    const CommandOutcome outcome{
        .allowed = [&] { order += 'a'; }, .refused = [&] { order += 'r'; }, .sent = [&](bool) { order += 's'; }};
    const Batch batch(UserCommand::SendTestMail);
    rig.password.answer = FakePassword::Answer::Later;
    rig.commander.SendProtected(batch, outcome);
    EXPECT_TRUE(rig.TakeRecords().empty());
    rig.password.Give(true);
    EXPECT_EQ(rig.TakeRecords().size(), 2U) << "the command and its event";
    rig.password.answer = FakePassword::Answer::Refuse;
    rig.commander.SendProtected(batch, outcome);
    // Nobody can ask for the password yet.
    Commander(rig.link, rig.language).SendProtected(batch, outcome);
    Commander(rig.link, rig.language).SendProtected(batch);
    EXPECT_TRUE(rig.TakeRecords().empty());
    EXPECT_EQ(order, "asrr");
    rig.commander.SendProtected(Batch(UserCommand::SwitchNetwork));
    EXPECT_EQ(rig.TakeRecords().size(), 1U);
    EXPECT_EQ(rig.password.asked, 2) << "not for what is free";
}

TEST(CommanderTest, TellsWhetherTheServiceWasThere) {
    test::CommanderRig rig;
    std::optional<bool> wasThere;
    const auto done = [&](bool there) { wasThere = there; };
    rig.commander.Send(Batch(UserCommand::ReloadNetwork), done);
    rig.Settle();
    EXPECT_EQ(wasThere, true);
    rig.Pipe().failingWaits = 1;
    rig.Pipe().waits.clear();
    rig.commander.RemoveSites({1, 2, 3}, done);
    rig.Settle();
    EXPECT_EQ(wasThere, false);
    EXPECT_EQ(rig.Pipe().waits.size(), 1U) << "each of them would take long";
    rig.Pipe().outcome = PipeOutcome::TimedOut;
    rig.commander.RemoveSites({1, 2, 3}, {});
    rig.Settle();
    EXPECT_EQ(rig.Pipe().requests.size(), 1U);
}

TEST(NetworkSwitchTest, KnowsOnlyWhatTheServiceHasTaken) {
    test::CommanderRig rig;
    NetworkSwitch network(rig.commander);
    {
        const auto held = rig.Hold();
        network.Switch(true);
        network.Switch(false);
        EXPECT_EQ(network.State(), std::nullopt) << "on its way";
    }
    rig.Settle();
    network.OnService(PeerState::Reachable);
    EXPECT_EQ(network.State(), false);
    network.OnService(PeerState::Missing);
    EXPECT_EQ(network.State(), std::nullopt);
    network.ResetFingerprints();  // with what was wanted last
    rig.Settle();
    EXPECT_EQ(network.State(), false);
    network.Switch(true);
    rig.Settle();
    EXPECT_EQ(network.State(), true);
}

}  // namespace
}  // namespace brennvar
