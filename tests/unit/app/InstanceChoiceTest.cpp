#include "app/InstanceChoice.h"

#include <gtest/gtest.h>

#include "support/FakeClock.h"

namespace brennvar {
namespace {

using namespace std::chrono_literals;

// An earlier start that ends, and that answers, from some moment on; never, when there is none.
class FakeStarts final : public EarlierStarts {
public:
    std::chrono::milliseconds endsAt = std::chrono::milliseconds::max();
    std::chrono::milliseconds answersAt = std::chrono::milliseconds::max();
    test::FakeClock clock;

    [[nodiscard]] bool IsAnyThere() override { return clock.elapsed < endsAt; }
    [[nodiscard]] bool CallForward() override { return clock.elapsed >= answersAt; }
};

TEST(InstanceChoiceTest, OneOfSeveralStartsRunsAndTheOthersCallItOrWaitForItsEnd) {
    struct Row {
        const char* what;
        std::chrono::milliseconds endsAt, answersAt;
        InstanceChoice choice;
        std::chrono::milliseconds waited;
    };
    constexpr auto kNever = std::chrono::milliseconds::max();
    const Row rows[] = {{"no other", 0ms, kNever, InstanceChoice::Run, 0ms},
                        {"a window of one that counts as later", 0ms, 0ms, InstanceChoice::Leave, 0ms},
                        {"a window", kNever, 0ms, InstanceChoice::Leave, 0ms},
                        {"one that is starting", kNever, 420ms, InstanceChoice::Leave, 450ms},
                        {"one that is leaving", 3010ms, kNever, InstanceChoice::Run, 3050ms},
                        {"one that needs all of its time", 24'999ms, kNever, InstanceChoice::Run, 25'000ms},
                        {"one that hangs", kNever, kNever, InstanceChoice::Stuck, 25'000ms}};
    for (const Row& row : rows) {
        FakeStarts starts;
        const std::chrono::milliseconds begin = starts.clock.elapsed;
        if (row.endsAt != kNever) starts.endsAt = begin + row.endsAt;
        if (row.answersAt != kNever) starts.answersAt = begin + row.answersAt;
        EXPECT_EQ(ChooseInstance(starts, starts.clock), row.choice) << row.what;
        EXPECT_EQ(starts.clock.elapsed - begin, row.waited) << row.what;
    }
}

}  // namespace
}  // namespace brennvar
