#include "app/MachineWatch.h"

#include <gtest/gtest.h>

#include "support/CommanderRig.h"
#include "support/FakeClock.h"

namespace brennvar {
namespace {

std::vector<InterfaceAddress> s_addresses;  // of this machine, for the function without a context

TEST(MachineWatchTest, TellsOfAddressesThatComeAndGo) {
    test::CommanderRig rig;
    const test::FakeClock clock;
    s_addresses = {{.address = 1, .operationalStatus = kInterfaceOperational}};
    MachineWatch watch(clock, rig.language, rig.commander, [] { return s_addresses; });
    watch.CheckNetwork();
    EXPECT_TRUE(rig.TakeRecords().empty());
    s_addresses.push_back({.address = 2, .operationalStatus = kInterfaceOperational});
    watch.CheckNetwork();
    watch.CheckNetwork();
    EXPECT_EQ(rig.TakeRecords(), std::vector<test::RawBytes>{test::ZerosWith(5596, {{0, "\7"}})});
}

TEST(MachineWatchTest, TellsOfAClockThatWasSet) {
    test::CommanderRig rig;
    test::FakeClock clock;
    MachineWatch watch(clock, rig.language, rig.commander, [] { return s_addresses; });
    const auto event = [](std::string_view subject, std::string_view detail) {
        return std::vector<test::RawBytes>{test::ZerosWith(
            5596, {{0, "\1"}, {4, "System time changed"}, {132, subject}, {644, "\2"}, {648, detail}})};
    };
    clock.now += 20 * kFileTimePerSecond;
    watch.CheckClock();
    EXPECT_TRUE(rig.TakeRecords().empty());
    clock.now += 20 * kFileTimePerSecond + 1;
    watch.CheckClock();
    EXPECT_EQ(rig.TakeRecords(), event("Future", "System time changed to the future"));
    clock.now -= 1;
    watch.CheckClock();
    EXPECT_EQ(rig.TakeRecords(), event("Past", "System time changed to the past"));
    watch.SkipNextClockCheck();
    clock.now -= 1;
    watch.CheckClock();
    EXPECT_TRUE(rig.TakeRecords().empty()) << "the machine has slept";
}

}  // namespace
}  // namespace brennvar
