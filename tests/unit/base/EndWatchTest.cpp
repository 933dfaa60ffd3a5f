#include "base/EndWatch.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <stdexcept>

#include "base/Detached.h"
#include "base/TaskThread.h"

namespace brennvar {
namespace {

constexpr std::chrono::milliseconds kNoTime{0};

TEST(EndWatchTest, CallsWhenTheEndIsOverdueAndNotAfterIt) {
    std::promise<void> overdue;
    const EndWatch watch(kNoTime, [&] { overdue.set_value(); });
    overdue.get_future().get();
    std::atomic<bool> isCalled = false;
    {
        const EndWatch inTime(std::chrono::hours(1), [&] { isCalled = true; });
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

}  // namespace
}  // namespace brennvar
