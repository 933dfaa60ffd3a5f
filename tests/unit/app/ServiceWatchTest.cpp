#include "app/ServiceWatch.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

using std::chrono::milliseconds;

class ServiceWatchTest : public testing::Test {
protected:
    ServiceWatch watch;
    ServiceWatch::Time now{std::chrono::hours(5)};

    void Pass(milliseconds duration) { now += duration; }
    [[nodiscard]] PeerState State() const { return watch.State(now); }
};

TEST_F(ServiceWatchTest, BelievesWhatACallFound) {
    EXPECT_EQ(State(), PeerState::Unknown);
    watch.CallGiven(now);
    EXPECT_EQ(State(), PeerState::Unknown);
    watch.CallOver(now, true);
    EXPECT_EQ(State(), PeerState::Reachable);
    Pass(std::chrono::hours(1));  // nobody asked: still the last answer
    EXPECT_EQ(State(), PeerState::Reachable);
    watch.CallGiven(now);
    watch.CallOver(now, false);
    EXPECT_EQ(State(), PeerState::Missing);
    watch.CallGiven(now);
    watch.CallOver(now, std::nullopt);  // a quick command proves nothing
    EXPECT_EQ(State(), PeerState::Missing);
}

TEST_F(ServiceWatchTest, LosesPatienceWithACallThatHangs) {
    watch.CallGiven(now);
    watch.CallOver(now, true);
    watch.CallGiven(now);
    watch.CallGiven(now);
    Pass(ServiceWatch::kPatience - milliseconds(1));
    EXPECT_EQ(State(), PeerState::Reachable);
    Pass(milliseconds(1));
    EXPECT_EQ(State(), PeerState::Missing);
    // The first gives up after a minute; the second has only just got its turn, but nothing has proved better.
    Pass(std::chrono::minutes(1));
    watch.CallOver(now, std::nullopt);
    EXPECT_EQ(State(), PeerState::Missing);
    // The service is back.
    watch.CallOver(now, true);
    EXPECT_EQ(State(), PeerState::Reachable);
}

TEST_F(ServiceWatchTest, ALongQueueThatMovesIsNoReasonForDoubt) {
    watch.CallGiven(now);
    watch.CallOver(now, true);
    for (int i = 0; i < 10; ++i) watch.CallGiven(now);
    for (int i = 0; i < 10; ++i) {
        Pass(ServiceWatch::kPatience / 2);
        EXPECT_EQ(State(), PeerState::Reachable) << i;
        watch.CallOver(now, std::nullopt);
    }
    EXPECT_EQ(State(), PeerState::Reachable);
}

}  // namespace
}  // namespace brennvar
