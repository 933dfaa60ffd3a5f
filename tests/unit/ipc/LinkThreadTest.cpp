#include "ipc/LinkThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <memory>
#include <stdexcept>
#include <vector>

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// Longer than any of this takes; no test waits for it to pass.
constexpr auto kLong = std::chrono::milliseconds(60'000);

// Plays the window: counts the wake-ups and waits for them.
class Wakes {
public:
    void operator()() {
        {
            const std::lock_guard lock(m_mutex);
            ++m_count;
        }
        m_changed.notify_all();
    }
    [[nodiscard]] bool WaitForCount(int count) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, kLong, [&] { return m_count >= count; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_count = 0;
};

TEST(LinkThreadTest, RunsTasksThereAndCompletionsHereInOrder) {
    Wakes wakes;
    LinkThread link(std::ref(wakes));
    std::vector<int> tasks;  // touched by the link thread only, until it is joined
    std::vector<int> completions;
    std::atomic<bool> ranHere = false;
    const auto here = std::this_thread::get_id();
    for (int i = 0; i < 100; ++i) {
        link.Post(
            [&, i] {
                tasks.push_back(i);
                if (std::this_thread::get_id() == here) ranHere = true;
            },
            [&, i] {
                completions.push_back(i);
                EXPECT_EQ(std::this_thread::get_id(), here);
            });
    }
    ASSERT_TRUE(wakes.WaitForCount(100));
    EXPECT_TRUE(completions.empty());
    link.RunCompletions();
    link.Stop(kLong);
    std::vector<int> expected(100);
    for (int i = 0; i < 100; ++i) expected[static_cast<std::size_t>(i)] = i;
    EXPECT_EQ(tasks, expected);
    EXPECT_EQ(completions, expected);
    EXPECT_FALSE(ranHere);
}

TEST(LinkThreadTest, LosesNoTaskOfManyThreads) {
    std::atomic<int> ran = 0;
    int completed = 0;
    LinkThread link([] {});
    {
        std::vector<std::future<void>> posters;
        posters.reserve(4);
        for (int i = 0; i < 4; ++i) {
            posters.push_back(std::async(std::launch::async, [&] {
                for (int k = 0; k < 250; ++k) link.Post([&] { ++ran; }, [&] { ++completed; });
            }));
        }
    }
    link.Stop(kLong);
    EXPECT_EQ(ran, 1000);
    link.RunCompletions();  // what was finished before the stop is not lost either
    EXPECT_EQ(completed, 1000);
}

TEST(LinkThreadTest, GoesOnAfterWhateverThrows) {
    int wakeCount = 0;
    std::vector<int> completions;
    LinkThread link([&] {
        ++wakeCount;
        throw std::runtime_error("wake");
    });
    link.Post([] { throw std::runtime_error("task"); }, [&] { completions.push_back(1); });
    link.Post([] { throw 7; });
    link.Post({}, [&] {
        completions.push_back(2);
        throw std::runtime_error("completion");
    });
    link.Post([] {}, [&] { completions.push_back(3); });
    link.Stop(kLong);
    link.RunCompletions();
    EXPECT_EQ(completions, (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(wakeCount, 3);
}

TEST(LinkThreadTest, StopCutsTheWaitOfATaskShortAndDropsTheRest) {
    LinkThread link([] {});
    std::promise<void> started;
    std::atomic<bool> waitedToTheEnd = false;
    std::atomic<int> dropped = 0;
    bool completed = false;
    link.Post(
        [&] {
            started.set_value();
            waitedToTheEnd = link.Stopping().WaitFor(10 * kLong);
        },
        [&] { completed = true; });
    const auto alive = std::make_shared<int>();
    link.Post([&dropped, alive] { ++dropped; }, [&dropped] { ++dropped; });
    started.get_future().wait();
    EXPECT_FALSE(link.Stopping().Requested());
    link.Stop(1ms);
    EXPECT_TRUE(link.Stopping().Requested());
    EXPECT_FALSE(waitedToTheEnd);
    link.Post([&] { ++dropped; }, [&] { ++dropped; });  // after the stop: dropped as well
    link.RunCompletions();
    EXPECT_TRUE(completed);
    EXPECT_EQ(dropped, 0);
    EXPECT_EQ(alive.use_count(), 1);
}

TEST(LinkThreadTest, StopsOnceHoweverOftenAndFromWherever) {
    std::atomic<int> ran = 0;
    {
        LinkThread link([] {});
        link.Post([&] {
            ++ran;
            link.Stop(kLong);  // by a task: cannot wait for itself
        });
        link.Post([] {});
        auto other = std::async(std::launch::async, [&] { link.Stop(kLong); });
        link.Stop(kLong);
        other.get();
        link.Stop(kLong);
    }
    EXPECT_EQ(ran, 1);
    {
        const LinkThread idle([] {});
    }  // never used, never stopped
}

TEST(LinkThreadTest, CompletionsMayPostAndRunCompletionsThemselves) {
    Wakes wakes;
    LinkThread link(std::ref(wakes));
    std::vector<int> order;
    link.Post([] {},
              [&] {
                  order.push_back(1);
                  link.RunCompletions();  // as a dialog does that pumps messages
                  order.push_back(3);
                  link.Post([] {}, [&] { order.push_back(4); });
              });
    link.Post([] {}, [&] { order.push_back(2); });
    ASSERT_TRUE(wakes.WaitForCount(2));
    link.RunCompletions();  // the last completion may be waiting already, or come later
    ASSERT_TRUE(wakes.WaitForCount(3));
    link.RunCompletions();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3, 4}));
}

}  // namespace
}  // namespace brennvar
