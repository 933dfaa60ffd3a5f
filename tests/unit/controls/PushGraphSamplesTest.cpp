#include "controls/PushGraphSamples.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

using Samples = std::vector<std::int32_t>;

TEST(PushGraphSamplesTest, CountsTheSamplesThatReachPastTheRightEdge) {
    struct Row {
        int plotWidth, interval, expected;
    };
    const Row rows[] = {{300, 10, 32}, {301, 10, 33}, {309, 10, 33}, {9, 10, 3}, {0, 10, 2}, {-50, 10, 1}};
    for (const Row& row : rows) {
        EXPECT_EQ(VisibleSampleCount(row.plotWidth, row.interval), row.expected) << row.plotWidth;
    }
}

TEST(PushGraphSamplesTest, KeepsValuesInTheRangeThatHoldsWhenTheyCome) {
    PushGraphSamples graph({.maximum = 100});
    graph.AddLine(7);
    graph.AddLine(7);
    for (const std::int64_t value : {-1LL, 0LL, 100LL, 101LL, 1LL << 40}) graph.Push(value, 7);
    graph.Push(50, 8);  // no such line
    ASSERT_EQ(graph.Lines().size(), 1U);
    EXPECT_EQ(graph.Lines()[0].samples, (Samples{0, 0, 100, 100, 100}));
    EXPECT_EQ(graph.HeightOf(25, 200), 50);
    // What is there already is not rescaled: it may stand above the plot.
    graph.SetRange({.maximum = 50});
    EXPECT_EQ(graph.Lines()[0].samples.back(), 100);
    EXPECT_EQ(graph.HeightOf(100, 200), 400);
    // Another minimum: the stored number counts from there.
    graph.SetRange({.minimum = 10, .maximum = 20});
    graph.Push(15, 7);
    EXPECT_EQ(graph.HeightOf(graph.Lines()[0].samples.back(), 200), 100);
}

TEST(PushGraphSamplesTest, PadsShorterLinesAndDropsTheOldest) {
    PushGraphSamples graph({.maximum = 1000});
    graph.AddLine(0);
    graph.AddLine(1);
    graph.AddLine(2);
    for (int value = 1; value <= 6; ++value) graph.Push(value, 0);
    graph.Push(8, 1);
    graph.Push(9, 1);
    graph.PrepareToPaint(30);  // 5 are visible: 4 are kept
    EXPECT_EQ(graph.Lines()[0].samples, (Samples{3, 4, 5, 6}));
    EXPECT_EQ(graph.Lines()[1].samples, (Samples{9, 9, 9, 9}));
    EXPECT_EQ(graph.Lines()[2].samples, (Samples{0, 0, 0, 0}));
}

TEST(PushGraphSamplesTest, GridMovesWithTheSamples) {
    struct Row {
        int interval;
        std::vector<int> expected;  // after each update
    };
    // Plots of three intervals show five samples. Nothing moves before the fifth is pushed.
    const Row rows[] = {{10, {0, 10, 0, 10}}, {7, {0, 13, 6, 19}}};
    for (const Row& row : rows) {
        PushGraphSamples graph({.maximum = 1000});
        graph.SetPixels(row.interval, 20);
        graph.AddLine(0);
        for (int value = 0; value < 3; ++value) graph.Push(value, 0);
        graph.Update();  // never painted: nobody knows how many are visible
        graph.PrepareToPaint(3 * row.interval);
        std::vector<int> offsets;
        for (std::size_t tick = 0; tick < row.expected.size(); ++tick) {
            graph.Push(5, 0);
            graph.Update();
            offsets.push_back(graph.GridOffset());
            graph.PrepareToPaint(3 * row.interval);
        }
        EXPECT_EQ(offsets, row.expected) << row.interval;
        // Two samples before one painting move it by two intervals.
        graph.Push(5, 0);
        graph.Push(5, 0);
        graph.Update();
        EXPECT_EQ(graph.GridOffset(), (row.expected.back() + 40 - 2 * row.interval) % 20) << row.interval;
    }
}

TEST(PushGraphSamplesTest, StaysSmallWhileNobodyLooks) {
    PushGraphSamples graph({.maximum = 100'000});
    graph.AddLine(0);
    constexpr int kEightHours = 8 * 60 * 60;
    for (int second = 1; second <= kEightHours; ++second) {
        graph.Push(second, 0);
        graph.Update();
    }
    EXPECT_EQ(graph.Lines()[0].samples.size(), PushGraphSamples::kMostSamples);
    graph.PrepareToPaint(300);
    EXPECT_EQ(graph.Lines()[0].samples.size(), 31U);
    EXPECT_EQ(graph.Lines()[0].samples.back(), kEightHours);
}

}  // namespace
}  // namespace brennvar
