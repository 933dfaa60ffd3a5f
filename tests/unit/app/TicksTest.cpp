#include "app/Ticks.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace brennvar {
namespace {

class Recorder final : public TickActions {
public:
    std::string done;
    std::function<void()> whileAnswering = [] {};

    void RefreshFigures() override { done += 'f'; }
    void CheckNetwork() override { done += 'n'; }
    void CheckClock() override { done += 'c'; }
    void AnswerQuestion() override {
        done += 'q';
        whileAnswering();
    }
    void FetchNotice() override { done += 't'; }
    void FollowGrip() override { done += 'g'; }
};

TEST(TicksTest, RunsTheActionOfEachTimer) {
    Recorder recorder;
    Ticks ticks(recorder);
    std::string periods;
    for (const TickInfo& tick : Ticks::Table()) {
        ticks.OnTimer(tick.timer);
        periods += std::to_string(tick.timer) + ":" + std::to_string(tick.period.count()) + " ";
    }
    ticks.OnTimer(0);
    ticks.OnTimer(7);
    EXPECT_EQ(recorder.done, "fncqtg");
    EXPECT_EQ(periods, "1:1000 2:1000 3:1000 4:100 5:1000 6:100 ");
}

TEST(TicksTest, DoesNothingWhileTheSameIsUnderWay) {
    Recorder recorder;
    Ticks ticks(recorder);
    recorder.whileAnswering = [&] {
        ticks.OnTimer(4);
        ticks.OnTimer(3);
        throw std::runtime_error("broken");
    };
    EXPECT_THROW(ticks.OnTimer(4), std::runtime_error);
    EXPECT_EQ(recorder.done, "qc");
    recorder.whileAnswering = [] {};
    ticks.OnTimer(4);
    EXPECT_EQ(recorder.done, "qcq") << "it is over, whatever came of it";
}

TEST(TicksTest, OnlyTheGripRestsWhileTheWindowIsAway) {
    Recorder recorder;
    Ticks ticks(recorder);
    const auto wanted = [&] {
        std::string timers;
        for (const TickInfo& tick : Ticks::Table()) {
            if (ticks.IsWanted(tick)) timers += std::to_string(tick.timer);
        }
        return timers;
    };
    EXPECT_EQ(wanted(), "12345") << "a window begins unseen";
    EXPECT_FALSE(ticks.SetSeen(false));
    EXPECT_TRUE(ticks.SetSeen(true));
    EXPECT_EQ(wanted(), "123456");
    EXPECT_FALSE(ticks.SetSeen(true));
    EXPECT_TRUE(ticks.SetSeen(false));
}

}  // namespace
}  // namespace brennvar
