#include "app/ResourceHandover.h"

#include <gtest/gtest.h>

#include <string>

#include "support/CommanderRig.h"
#include "support/FakeClock.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

TEST(ResourceHandoverTest, EndsWithTheDeliveryOrWithThePatienceAndThenForGood) {
    test::CommanderRig rig;
    test::FakeClock clock;
    ResourceHandover handover(rig.commander, rig.link, clock);
    std::string told;
    const auto begin = [&] {
        told.clear();
        handover.Begin({.skin = "Graphite", .language = "Slovak"},
                       [&](bool isDelivered) { told += isDelivered ? 'd' : 'l'; });
    };
    const auto hold = [&](std::chrono::milliseconds patience) {
        const auto held = rig.Hold();
        begin();
        clock.Pass(patience - 1ms);
        handover.Tick();
        EXPECT_EQ(told, "");
        clock.Pass(1ms);
        handover.Tick();
        EXPECT_EQ(told, "l");
    };
    hold(3s);  // nothing is known of the service
    EXPECT_TRUE(rig.TakeRecords().empty());
    begin();
    const auto records = rig.TakeRecords();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[0][0], std::byte{18});
    EXPECT_EQ(records[1][0], std::byte{19});
    clock.Pass(1h);
    handover.Tick();
    EXPECT_EQ(told, "d");
    rig.Pipe().foreignOpens = 1;
    rig.commander.SetFilterPort(8080, {});
    begin();
    EXPECT_EQ(rig.TakeRecords().size(), 2U);
    ASSERT_EQ(rig.link.Service(), PeerState::Foreign);
    hold(10s);  // the service is there, whoever has another of its pipes
    EXPECT_TRUE(rig.TakeRecords().empty());
    handover.Tick();
    EXPECT_EQ(told, "l") << "once";
}

}  // namespace
}  // namespace brennvar
