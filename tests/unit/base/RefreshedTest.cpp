#include "base/Refreshed.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

using Delivered = std::vector<std::pair<std::optional<int>, int>>;

// Reads a number that the test changes; each request is a number as well.
class RefreshedTest : public testing::Test {
protected:
    test::FakeTaskQueue queue;
    std::optional<int> stored = 1;
    Delivered delivered;
    std::function<void()> whenDelivered = [] {};
    std::unique_ptr<Refreshed<int, int>> refreshed = std::make_unique<Refreshed<int, int>>(
        queue, [this](int request) { return request < 0 ? throw std::runtime_error("broken") : stored; },
        [this](std::optional<int> value, int request) {
            delivered.emplace_back(value, request);
            whenDelivered();
        });
};

TEST_F(RefreshedTest, ReadsOnceMoreForAllThatAskedMeanwhile) {
    refreshed->Refresh(10);
    refreshed->Refresh(11);
    queue.DoTask();
    refreshed->Refresh(12);
    stored = 2;
    EXPECT_EQ(queue.Waiting(), 0U) << "one reading at a time";
    EXPECT_EQ(refreshed->Next(), 12);
    queue.Complete();
    EXPECT_EQ(delivered, (Delivered{{1, 10}}));
    EXPECT_TRUE(refreshed->IsReading());
    EXPECT_EQ(refreshed->Next(), std::nullopt);
    queue.RunAll();
    EXPECT_EQ(delivered, (Delivered{{1, 10}, {2, 12}}));
    stored = std::nullopt;
    for (const int request : {13, -1}) {
        refreshed->Refresh(request);
        queue.RunAll();
        EXPECT_EQ(delivered.back(), std::pair(std::optional<int>(), request)) << "a reading that has failed";
    }
    EXPECT_FALSE(refreshed->IsReading());
}

TEST_F(RefreshedTest, MayBeAskedAgainOrDestroyedByWhatItDelivers) {
    whenDelivered = [&] { delivered.size() == 1 ? refreshed->Refresh(2) : refreshed.reset(); };
    refreshed->Refresh(1);
    queue.RunAll();
    EXPECT_EQ(delivered, (Delivered{{1, 1}, {1, 2}}));
}

TEST_F(RefreshedTest, IsSilentWhenItsOwnerHasGone) {
    refreshed->Refresh(1);
    refreshed->Refresh(2);
    queue.DoTask();
    refreshed.reset();
    queue.Complete();
    EXPECT_EQ(queue.Waiting(), 0U) << "nor is it read again";
    EXPECT_TRUE(delivered.empty());
}

}  // namespace
}  // namespace brennvar
