// Another program has made the pipes of the service before it: nothing is told to it, and it is waited for the
// service as if no pipe were there.
#include <gtest/gtest.h>

#include "ipc/CommandPipe.h"
#include "ipc/FilterQueue.h"
#include "ipc/PipeRecords.h"
#include "ipc/ServicePipes.h"
#include "ipc/WatchedConnector.h"
#include "ipc/WithdrawableConnector.h"
#include "support/FakeClock.h"
#include "support/FakePipe.h"

namespace brennvar {
namespace {

using test::FakePipe;

struct SquattedPipeTest : testing::Test {
    FakePipe pipe;
    test::FakeClock clock;
    WatchedConnector watched{pipe};
    WithdrawableConnector withdrawable{watched};
    CommandPipe commands{withdrawable, clock};
    FilterQueue queue{watched, clock};
    ServicePipes service{watched, clock};
};

TEST_F(SquattedPipeTest, GetsNothingAndIsCalledOnAgainLikeAMissingService) {
    pipe.foreignOpens = FakePipe::kAlways;
    const struct {
        const char* name;
        std::function<void()> call;
        std::size_t calls;
    } roads[] = {{kCommandPipeName, [&] { commands.CMD_RESET(); }, 30},
                 {kPidResolvePipeName, [&] { EXPECT_EQ(service.ResolveProcessPath(4), std::nullopt); }, 30},
                 {kTrayPipeName, [&] { EXPECT_EQ(service.FetchTrayText(), std::nullopt); }, 30},
                 {kFilterQueuePipeName, [&] { queue.FILTER_SET_PROXY_PORT(8080); }, 1},
                 {kFilterQueuePipeName, [&] { EXPECT_EQ(queue.FILTER_QUERY("site"), 0U); }, 1}};
    for (const auto& road : roads) {
        pipe.opened.clear();
        clock.sleeps.clear();
        road.call();
        EXPECT_EQ(pipe.opened, std::vector<std::string>(road.calls, road.name));
        EXPECT_EQ(clock.sleeps.size(), road.calls - 1) << road.name;
        EXPECT_EQ(watched.StateOf(road.name), PeerState::Foreign) << road.name;
    }
    EXPECT_TRUE(pipe.writes.empty() && pipe.requests.empty());
    EXPECT_FALSE(service.LastCallMetService());
    EXPECT_EQ(watched.State(), PeerState::Foreign);
}

TEST_F(SquattedPipeTest, IsToldAsLongAsOnePipeOfTheServiceThatRunsIsSomebodyElses) {
    pipe.foreignOpens = 1;
    queue.FILTER_SET_PROXY_PORT(8080);
    pipe.foreignOpens = 2;
    commands.CMD_RESET();
    EXPECT_EQ(pipe.writes.size(), 1U) << "the third pipe was the service's";
    EXPECT_EQ(watched.LastCall(), PeerState::Reachable);
    EXPECT_EQ(watched.StateOf(kCommandPipeName), PeerState::Reachable);
    EXPECT_EQ(watched.State(), PeerState::Foreign) << "the other one still";
    pipe.failingWaits = 1;  // a pipe that is not there says nothing about the others
    queue.FILTER_SET_PROXY_PORT(8080);
    pipe.failingWaits = 0;
    EXPECT_EQ(watched.StateOf(kFilterQueuePipeName), PeerState::Missing);
    pipe.foreignOpens = 30;
    (void)service.FetchTrayText();
    EXPECT_EQ(watched.StateOf(kTrayPipeName), PeerState::Foreign);
    commands.CMD_RESET();
    EXPECT_EQ(watched.State(), PeerState::Foreign) << "the other one still";
    EXPECT_EQ(watched.StateOf(kFilterQueuePipeName), PeerState::Unknown);
    pipe.foreignOpens = 1;
    queue.FILTER_SET_PROXY_PORT(8080);
    pipe.failingWaits = 1;  // the service is started again, and makes its pipes anew
    (void)service.FetchTrayText();
    EXPECT_EQ(watched.State(), PeerState::Reachable);
    EXPECT_EQ(watched.StateOf(kFilterQueuePipeName), PeerState::Unknown);
}

TEST_F(SquattedPipeTest, ACommandCanStillBeTakenBack) {
    pipe.foreignOpens = FakePipe::kAlways;
    const auto withdrawn = std::make_shared<StopSignal>();
    withdrawable.BeginBatch(withdrawn);
    clock.whenSlept = [&] { withdrawn->Request(); };
    EXPECT_THROW(commands.CMD_RESET(), BatchWithdrawn);
    EXPECT_EQ(pipe.opened.size(), 1U);
    // The service's own, which could not be opened.
    pipe.foreignOpens = 0;
    pipe.canOpen = false;
    const auto later = std::make_shared<StopSignal>();
    withdrawable.BeginBatch(later);
    commands.CMD_RESET();
    later->Request();
    EXPECT_THROW(commands.CMD_RESET(), BatchWithdrawn);
}

}  // namespace
}  // namespace brennvar
