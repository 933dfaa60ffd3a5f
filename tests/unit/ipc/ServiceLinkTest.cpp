#include "ipc/ServiceLink.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <thread>

#include "support/FakePipe.h"

namespace brennvar {
namespace {

using test::FakePipe;

// Longer than any of this takes; no test waits for it to pass.
constexpr auto kLong = std::chrono::milliseconds(60'000);

class ServiceLinkTest : public testing::Test {
protected:
    // Told in order: what was sent arrived, was given up, or what an Ask got.
    ServiceLink::Sent Tell(const std::string& name) {
        return [this, name](bool wasThere) { told.push_back(name + (wasThere ? " there" : " given up")); };
    }
    // The pipes and commands that were written, in their order.
    [[nodiscard]] std::string Written() const {
        std::string text;
        for (const FakePipe::Message& message : pipe->writes) {
            text += message.pipe.find("QUEUE") == std::string::npos ? 'c' : 'q';
            text += std::to_string(static_cast<int>(message.bytes[0])) + " ";
        }
        return text;
    }
    // Holds the link's thread up until go is set.
    void Block() {
        std::promise<void> started;
        link.Send([&](CommandPipe&) {
            started.set_value();
            go.get_future().wait();
        });
        started.get_future().wait();
    }

    std::vector<std::string> told;
    std::atomic<int> wakes = 0;
    std::promise<void> go;
    FakePipe* pipe = nullptr;  // the link's; looked at when the thread rests
    ServiceLink link{[this] { ++wakes; },
                     [this](const StopSignal&) {
                         auto made = std::make_unique<FakePipe>();
                         pipe = made.get();
                         return made;
                     }};
};

TEST_F(ServiceLinkTest, SendsBatchAfterBatchAndAnswersInTheSameOrder) {
    EXPECT_EQ(link.Service(), PeerState::Unknown);
    Block();
    link.Send(
        [](CommandPipe& commands) {
            commands.CMD_SET_OPTION(1, 2);
            commands.CMD_RELOAD_OPTIONS();
        },
        Tell("options"));
    link.SendToFilter([](FilterQueue& queue) { queue.FILTER_SET_PROXY_PORT(8080); }, Tell("port"));
    link.Ask<int>([](ServicePipes&) { return 7; },
                  [this](std::optional<int> got) { told.push_back(std::to_string(got.value_or(-1))); });
    link.Ask<int>([](ServicePipes&) -> int { throw std::runtime_error("no answer"); },
                  [this](std::optional<int> got) { told.push_back(std::to_string(got.value_or(-1))); });
    link.Send([](CommandPipe& commands) { commands.CMD_RESET(); });
    link.Send([](CommandPipe&) { throw std::runtime_error("no memory"); }, Tell("failed"));
    go.set_value();
    link.Stop(kLong);
    EXPECT_TRUE(told.empty()) << "on the thread of the windows only";
    link.RunCompletions();
    EXPECT_EQ(Written(), "c8 c16 q2 c29 ");
    EXPECT_EQ(told, (std::vector<std::string>{"options there", "port there", "7", "-1", "failed given up"}));
    EXPECT_EQ(wakes, 7) << "also for what nobody waits for: the state of the service may have changed";
    EXPECT_EQ(link.Service(), PeerState::Reachable);
}

TEST_F(ServiceLinkTest, SendsNothingOfAWithdrawnBatchUnlessItHasBegun) {
    const auto begun = std::make_shared<StopSignal>();
    link.Send(
        [begun](CommandPipe& commands) {
            commands.CMD_SET_OPTION(1, 2);
            begun->Request();
            commands.CMD_RELOAD_OPTIONS();
        },
        Tell("begun"), begun);
    const auto waiting = std::make_shared<StopSignal>();
    link.Send(
        [waiting](CommandPipe& commands) {
            waiting->Request();  // as during the wait for the service
            commands.CMD_RESET();
        },
        Tell("waiting"), waiting);
    link.Send([](CommandPipe&) { FAIL() << "it was withdrawn in the queue"; }, Tell("queued"), waiting);
    link.Send([](CommandPipe& commands) { commands.CMD_RESET(); }, Tell("next"));
    link.Stop(kLong);
    link.RunCompletions();
    EXPECT_EQ(Written(), "c8 c16 c29 ");
    EXPECT_EQ(told, (std::vector<std::string>{"begun there", "waiting given up", "queued given up", "next there"}));
}

TEST_F(ServiceLinkTest, LastCommandsAreWaitedForAsLongAsTheServiceIsThere) {
    const ServiceLink::Patience patience{.whileReachable = kLong, .whileMissing = std::chrono::milliseconds(0)};
    Block();
    link.Send([](CommandPipe& commands) { commands.CMD_SET_RUN_STATE(1); });
    link.WaitUntilSent(patience);
    EXPECT_TRUE(pipe->writes.empty()) << "nobody has seen the service";
    go.set_value();
    link.WaitUntilSent({.whileReachable = kLong, .whileMissing = kLong});
    go = {};
    Block();
    link.Send([](CommandPipe& commands) { commands.CMD_RESET(); });
    std::thread service([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        go.set_value();
    });
    link.WaitUntilSent(patience);
    EXPECT_EQ(Written(), "c24 c29 ") << "it was only busy";
    service.join();
}

TEST_F(ServiceLinkTest, StopEndsTheWaitsAndDropsWhatHasNotStarted) {
    pipe->failingWaits = FakePipe::kAlways;  // thirty waits, with a minute of pauses between them
    std::promise<void> waiting;
    link.Send(
        [&](CommandPipe& commands) {
            waiting.set_value();
            commands.CMD_RESET();
        },
        Tell("begun"));
    link.Send([](CommandPipe& commands) { commands.CMD_RESET(); }, Tell("queued"));
    waiting.get_future().wait();
    link.Stop(std::chrono::milliseconds(0));
    link.Send([](CommandPipe& commands) { commands.CMD_RESET(); }, Tell("late"));
    link.RunCompletions();
    EXPECT_LE(pipe->waits.size(), 2U);
    EXPECT_EQ(told, std::vector<std::string>{"begun given up"});
}

}  // namespace
}  // namespace brennvar
