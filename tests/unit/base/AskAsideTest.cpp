#include "base/AskAside.h"

#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <string>

namespace brennvar {
namespace {

constexpr std::chrono::milliseconds kNever = std::chrono::hours(1);

TEST(AskAsideTest, LeavesAQuestionBehindThatTakesTooLong) {
    StopSignal stop;
    EXPECT_EQ(AskAside([] { return std::string("name"); }, kNever, stop), "name");
    EXPECT_EQ(AskAside([]() -> int { throw std::runtime_error("no"); }, kNever, stop), std::nullopt);

    std::promise<void> released;
    std::promise<void> over;
    const std::shared_future<void> release = released.get_future().share();
    const auto question = [release, &over] {
        release.wait();
        over.set_value_at_thread_exit();
        return 1;
    };
    EXPECT_EQ(AskAside(question, std::chrono::milliseconds(0), stop), std::nullopt);
    stop.Request();
    EXPECT_EQ(AskAside([release] { return release.wait(), 1; }, kNever, stop), std::nullopt);
    released.set_value();
    over.get_future().wait();  // it goes on by itself, and what it uses is still there
}

}  // namespace
}  // namespace brennvar
