#include "ui/WorkerThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <stdexcept>

#include "support/FailingMemory.h"

namespace brennvar {

TEST(CWorkerThreadTest, RunsOneJobAtATimeUntilItIsStopped) {
    constexpr std::chrono::seconds kLong{30};  // far beyond what any of these waits takes
    std::atomic<int> ends = 0;
    {
        CWorkerThread worker([&ends] { ++ends; });
        std::atomic<bool> wasStopped = false;
        ASSERT_TRUE(
            worker.Start([&](const StopSignal& stop) { wasStopped = !stop.WaitFor(kLong) && stop.Requested(); }));
        EXPECT_TRUE(worker.Running());
        EXPECT_FALSE(worker.Start([](const StopSignal&) { FAIL() << "a second job ran"; }));
        worker.Stop();
        EXPECT_TRUE(wasStopped);
        std::promise<bool> wasFresh;
        std::promise<void> asked;
        ASSERT_TRUE(worker.Start([&](const StopSignal& stop) {
            wasFresh.set_value(!stop.Requested());
            if (!stop.WaitFor(kLong)) asked.set_value();
        }));
        EXPECT_TRUE(wasFresh.get_future().get());
        worker.RequestStop();
        asked.get_future().get();
        EXPECT_FALSE(worker.Start([](const StopSignal&) {}));  // it has not been stopped
        worker.Stop();
        ASSERT_TRUE(worker.Start([](const StopSignal&) { throw std::runtime_error("no memory"); }));
    }
    EXPECT_EQ(ends, 3);
    // Nothing leaves the thread, and nothing is left standing of a job that could not begin.
    CWorkerThread worker([] { throw std::runtime_error("finished"); });
    for (int before = 0;; ++before) {
        test::FailingMemory memory(before);
        memory.Run([&] { (void)worker.Start([](const StopSignal&) {}); });
        worker.Stop();
        EXPECT_FALSE(worker.Running()) << before;
        if (!memory.HasFailed()) break;
    }
    ASSERT_TRUE(worker.Start([](const StopSignal&) {}));
    worker.Stop();
}

}  // namespace brennvar
