#include "ui/WorkerThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <stdexcept>

namespace brennvar {
namespace {

constexpr std::chrono::seconds kLong{30};  // far beyond what any of these waits takes

TEST(CWorkerThreadTest, RunsOneJobAtATimeAndReportsItsEnd) {
    std::promise<void> finished;
    CWorkerThread worker([&finished] { finished.set_value(); });
    EXPECT_FALSE(worker.Running());
    std::promise<void> release;
    ASSERT_TRUE(worker.Start([&release](const StopSignal&) { release.get_future().wait(); }));
    EXPECT_TRUE(worker.Running());
    EXPECT_FALSE(worker.Start([](const StopSignal&) { FAIL() << "a second job ran"; }));
    release.set_value();
    ASSERT_EQ(finished.get_future().wait_for(kLong), std::future_status::ready);
    // Over, but its receiver has not taken notice of it yet.
    EXPECT_FALSE(worker.Running());
    EXPECT_FALSE(worker.Start([](const StopSignal&) { FAIL() << "a second job ran"; }));
    worker.Stop();
}

TEST(CWorkerThreadTest, StopEndsTheJobAndTheNextOneIsNotStopped) {
    std::atomic<int> ends = 0;
    CWorkerThread worker([&ends] { ++ends; });
    std::atomic<bool> wasStopped = false;
    ASSERT_TRUE(worker.Start([&wasStopped](const StopSignal& stop) { wasStopped = !stop.WaitFor(kLong); }));
    worker.Stop();
    EXPECT_TRUE(wasStopped);
    EXPECT_FALSE(worker.Running());
    std::promise<bool> requested;
    ASSERT_TRUE(worker.Start([&requested](const StopSignal& stop) { requested.set_value(stop.Requested()); }));
    EXPECT_FALSE(requested.get_future().get());
    worker.Stop();
    worker.Stop();
    EXPECT_EQ(ends, 2);
}

TEST(CWorkerThreadTest, AJobThatThrowsIsOver) {
    std::atomic<int> ends = 0;
    {
        CWorkerThread worker([&ends] { ++ends; });
        ASSERT_TRUE(worker.Start([](const StopSignal&) { throw std::runtime_error("no memory"); }));
    }
    EXPECT_EQ(ends, 1);
}

}  // namespace
}  // namespace brennvar
