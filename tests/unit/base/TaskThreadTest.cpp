#include "base/TaskThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <stdexcept>
#include <vector>

#include "support/FailingMemory.h"

namespace brennvar {
namespace {

// Longer than any of this takes; no test waits for it to pass.
constexpr auto kLong = std::chrono::milliseconds(60'000);

TEST(TaskThreadTest, RunsTasksThereAndCompletionsHereInOrderAndNeedsNoMemoryThere) {
    constexpr int kCount = 100;  // more than a container that grows by the way has room for
    std::atomic<int> wakes = 0;
    TaskThread link([&] { ++wakes; });
    std::vector<int> tasks(kCount);  // touched by the link thread only, until it is joined
    std::vector<int> completions, expected;
    const auto here = std::this_thread::get_id();
    for (int i = 0; i < kCount; ++i) {
        expected.push_back(i);
        link.Post(
            [&, i] {
                tasks[static_cast<std::size_t>(wakes)] = std::this_thread::get_id() == here ? -1 : i;
                test::UseMemoryUp();
            },
            [&, i] { completions.push_back(std::this_thread::get_id() == here ? i : -1); });
    }
    link.Stop(kLong);  // lets what is waiting be done
    EXPECT_EQ(wakes, kCount);
    EXPECT_TRUE(completions.empty());
    link.RunCompletions();
    EXPECT_EQ(tasks, expected);
    EXPECT_EQ(completions, expected);
    // What cannot be posted has not been posted.
    TaskThread other([] {});
    int done = 0;
    test::FailingMemory memory(0);
    memory.Run([&] { other.Post([&done] { ++done; }); });
    other.Stop(kLong);
    EXPECT_EQ(done, 0);
}

TEST(TaskThreadTest, GoesOnAfterWhateverThrowsAndWhateverIsNested) {
    std::vector<int> completions;
    TaskThread link([] { throw std::runtime_error("wake"); });
    link.Post([] { throw std::runtime_error("task"); },
              [&] {
                  completions.push_back(1);
                  link.RunCompletions();  // as a dialog does that pumps messages
                  completions.push_back(3);
                  throw 7;
              });
    link.Post([] { throw 7; });
    link.Post({}, [&] { completions.push_back(2); });
    auto other = std::async(std::launch::async, [&] { link.Stop(kLong); });
    link.Stop(kLong);
    other.get();
    link.RunCompletions();
    EXPECT_EQ(completions, (std::vector<int>{1, 2, 3}));
    TaskThread byTask([] {});
    byTask.Post([&] { byTask.Stop(kLong); });  // cannot wait for itself
}

}  // namespace
}  // namespace brennvar
