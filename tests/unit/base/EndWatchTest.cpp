// Waits that end although somebody else does not.
#include "base/EndWatch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>

#include "base/AskAside.h"
#include "base/Detached.h"
#include "base/TaskThread.h"
#include "base/WhileAlive.h"

namespace brennvar {
namespace {

constexpr std::chrono::milliseconds kNoTime{0}, kNever = std::chrono::hours(1);

TEST(EndWatchTest, CallsWhenTheEndIsOverdueAndNotAfterIt) {
    std::promise<void> overdue;
    const EndWatch watch(kNoTime, [&] { overdue.set_value(); });
    overdue.get_future().get();
    std::atomic<bool> isCalled = false;
    {
        const EndWatch inTime(kNever, [&] { isCalled = true; });
    }
    EXPECT_FALSE(isCalled);
}

TEST(EndWatchTest, NobodyWaitsForWhatHeedsNoStop) {
    std::promise<void> disk;  // holds up whoever reads
    const std::shared_future<void> read = disk.get_future().share();
    std::promise<void> begun, shellBegun, otherDone, shellDone;
    TaskThread thread([] {});
    thread.Post([&] {
        begun.set_value();
        read.get();
    });
    begun.get_future().get();
    thread.RequestStop(kNoTime);
    EXPECT_TRUE(thread.Stopping().Requested());

    // One browser that does not come up keeps the next one from nothing.
    EXPECT_TRUE(RunDetached([&] {
        shellBegun.set_value();
        read.get();
        shellDone.set_value();
        throw std::runtime_error("dropped");
    }));
    shellBegun.get_future().get();
    EXPECT_TRUE(RunDetached([&] { otherDone.set_value(); }));
    otherDone.get_future().get();

    disk.set_value();
    shellDone.get_future().get();
    thread.Stop(kNoTime);
}

TEST(AskAsideTest, LeavesAQuestionBehindThatTakesTooLong) {
    StopSignal stop;
    EXPECT_EQ(AskAside([] { return std::string("name"); }, kNever, stop), "name");
    EXPECT_EQ(AskAside([]() -> int { throw std::runtime_error("no"); }, kNever, stop), std::nullopt);
    std::promise<void> released, over;
    const std::shared_future<void> release = released.get_future().share();
    const auto question = [release, &over] {
        release.wait();
        over.set_value_at_thread_exit();
        return 1;
    };
    EXPECT_EQ(AskAside(question, kNoTime, stop), std::nullopt);
    stop.Request();
    EXPECT_EQ(AskAside([release] { return release.wait(), 1; }, kNever, stop), std::nullopt);
    released.set_value();
    over.get_future().wait();  // it goes on by itself, and what it uses is still there
}

TEST(WhileAliveTest, CallsWithArgumentsUntilItsOwnerHasGone) {
    auto alive = std::make_unique<WhileAlive>();
    std::string told;
    const auto call =
        alive->Guard([&](bool isThere, std::string text) { told += isThere ? std::move(text) : "-"; });
    call(true, "text");
    alive.reset();
    call(true, "late");
    EXPECT_EQ(told, "text");
}

}  // namespace
}  // namespace brennvar
