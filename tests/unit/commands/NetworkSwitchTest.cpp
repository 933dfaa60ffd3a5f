#include "commands/NetworkSwitch.h"

#include <gtest/gtest.h>

#include "support/CommanderRig.h"

namespace brennvar {
namespace {

TEST(NetworkSwitchTest, KnowsOnlyWhatTheServiceHasTaken) {
    test::CommanderRig rig;
    NetworkSwitch network(rig.commander);
    EXPECT_EQ(network.State(), std::nullopt);
    {
        const auto held = rig.Hold();
        network.Switch(true);
        network.Switch(false);
        EXPECT_EQ(network.State(), std::nullopt) << "on its way";
    }
    rig.Settle();
    EXPECT_EQ(network.State(), false);
    network.OnService(PeerState::Reachable);
    EXPECT_EQ(network.State(), false);
    network.OnService(PeerState::Missing);
    EXPECT_EQ(network.State(), std::nullopt);
    // Command 25 with the value that was wanted last, while nobody knows any more.
    (void)rig.TakeRecords();
    network.ResetFingerprints();
    const std::vector<test::RawBytes> records = rig.TakeRecords();
    ASSERT_EQ(records.size(), 3U);
    EXPECT_EQ(records[1][0], std::byte{25});
    EXPECT_EQ(records[1][644], std::byte{0});
    EXPECT_EQ(network.State(), false);
    network.Switch(true);
    rig.Settle();
    EXPECT_EQ(network.State(), true);
}

}  // namespace
}  // namespace brennvar
