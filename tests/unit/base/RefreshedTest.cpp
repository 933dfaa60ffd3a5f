#include "base/Refreshed.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

#include "support/FakeTaskQueue.h"

namespace brennvar {
namespace {

// Reads a number that the test changes; each request is a number as well.
class RefreshedTest : public testing::Test {
protected:
    struct Delivered {
        std::optional<int> value;
        int request;
        friend bool operator==(const Delivered&, const Delivered&) = default;
    };
    test::FakeTaskQueue queue;
    std::optional<int> stored = 1;
    std::vector<Delivered> delivered;
    std::unique_ptr<Refreshed<int, int>> refreshed = std::make_unique<Refreshed<int, int>>(
        queue, [this](int) { return stored; },
        [this](std::optional<int> value, int request) {
            delivered.push_back({value, request});
        });
};

TEST_F(RefreshedTest, ReadsOnceMoreForAllThatAskedMeanwhile) {
    EXPECT_FALSE(refreshed->IsReading());
    refreshed->Refresh(10);
    refreshed->Refresh(11);
    queue.DoTask();
    refreshed->Refresh(12);
    stored = 2;
    EXPECT_EQ(queue.Waiting(), 0U) << "one reading at a time";
    EXPECT_EQ(refreshed->Next(), 12);
    queue.Complete();
    EXPECT_EQ(delivered, (std::vector<Delivered>{{1, 10}}));
    EXPECT_TRUE(refreshed->IsReading());
    EXPECT_EQ(refreshed->Next(), std::nullopt);
    queue.RunAll();
    EXPECT_EQ(delivered, (std::vector<Delivered>{{1, 10}, {2, 12}}));
    EXPECT_FALSE(refreshed->IsReading());
}

TEST_F(RefreshedTest, DeliversNothingForAReadingThatFailed) {
    stored = std::nullopt;
    refreshed->Refresh(1);
    queue.RunAll();
    Refreshed<int> failing(
        queue, [](const auto&) -> std::optional<int> { throw std::runtime_error("broken"); },
        [this](std::optional<int> value, const auto&) {
            delivered.push_back({value, 2});
        });
    failing.Refresh();
    queue.RunAll();
    EXPECT_EQ(delivered, (std::vector<Delivered>{{std::nullopt, 1}, {std::nullopt, 2}}));
    EXPECT_FALSE(failing.IsReading());
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

TEST_F(RefreshedTest, MayBeAskedAgainOrDestroyedByWhatItDelivers) {
    int deliveries = 0;
    std::unique_ptr<Refreshed<int>> again;
    again = std::make_unique<Refreshed<int>>(
        queue, [this](const auto&) { return stored; },
        [&](std::optional<int>, const auto&) {
            if (++deliveries == 1) {
                again->Refresh();
            } else {
                again.reset();
            }
        });
    again->Refresh();
    queue.RunAll();
    EXPECT_EQ(deliveries, 2);
}

}  // namespace
}  // namespace brennvar
