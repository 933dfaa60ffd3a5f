#include "app/MachineWatch.h"

#include <gtest/gtest.h>

#include "support/CommanderRig.h"
#include "support/FakeAddresses.h"
#include "support/FakeClock.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

TEST(MachineWatchTest, TellsOfAddressesThatComeAndGo) {
    test::CommanderRig rig;
    test::FakeClock clock;
    test::FakeAddresses addresses;
    addresses.all = {{.address = 1, .operationalStatus = kInterfaceOperational}};
    MachineWatch watch(clock, rig.language, rig.commander, addresses);
    const auto check = [&](std::chrono::milliseconds after) {
        clock.Pass(after);
        watch.CheckNetwork();
        return rig.TakeRecords();
    };
    EXPECT_EQ(addresses.readings, 0) << "the window comes first";
    const std::vector<test::RawBytes> told{test::ZerosWith(5596, {{0, "\7"}})};
    for (int second = 0; second < 30; ++second) EXPECT_TRUE(check(1s).empty());
    EXPECT_EQ(addresses.readings, 1) << "nothing has been reported";
    addresses.all.push_back({.address = 2, .operationalStatus = kInterfaceOperational});
    EXPECT_EQ(check(1s), told) << "a system that reports nothing is looked at after 30 s";
    EXPECT_TRUE(check(29'999ms).empty());
    EXPECT_EQ(addresses.readings, 2);
    addresses.haveChanged = true;
    EXPECT_TRUE(check(0ms).empty()) << "a change of something else";
    EXPECT_EQ(addresses.readings, 3);
    addresses.all.pop_back();
    addresses.haveChanged = true;
    EXPECT_EQ(check(1s), told);
}

TEST(MachineWatchTest, TellsOfAClockThatWasSet) {
    test::CommanderRig rig;
    test::FakeClock clock;
    test::FakeAddresses addresses;
    MachineWatch watch(clock, rig.language, rig.commander, addresses);
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
    clock.Pass(std::chrono::hours(8));
    watch.CheckClock();
    EXPECT_TRUE(rig.TakeRecords().empty()) << "the machine has slept";
}

}  // namespace
}  // namespace brennvar
