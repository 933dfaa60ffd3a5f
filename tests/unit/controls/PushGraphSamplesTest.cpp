#include "controls/PushGraphSamples.h"

#include <gtest/gtest.h>

namespace brennvar {
using Samples = std::vector<std::int32_t>;

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
    EXPECT_EQ(graph.HeightOf(graph.Lines()[0].samples.back(), 200), 400);
    // Another minimum: the stored number counts from there.
    graph.SetRange({.minimum = 10, .maximum = 20});
    graph.Push(15, 7);
    EXPECT_EQ(graph.HeightOf(graph.Lines()[0].samples.back(), 200), 100);
}

TEST(PushGraphSamplesTest, PadsShorterLinesDropsTheOldestAndStaysSmallWhileNobodyLooks) {
    PushGraphSamples graph({.maximum = 100'000});
    for (int line = 0; line < 3; ++line) graph.AddLine(line);
    constexpr int kEightHours = 8 * 60 * 60;
    for (int second = 1; second <= kEightHours; ++second) {
        graph.Push(second, 0);
        graph.Update();
    }
    EXPECT_EQ(graph.Lines()[0].samples.size(), PushGraphSamples::kMostSamples);
    graph.Push(8, 1);
    graph.Push(9, 1);
    graph.PrepareToPaint(30);  // 5 are visible: 4 are kept
    EXPECT_EQ(graph.Lines()[0].samples, (Samples{kEightHours - 3, kEightHours - 2, kEightHours - 1, kEightHours}));
    EXPECT_EQ(graph.Lines()[1].samples, (Samples{9, 9, 9, 9}));
    EXPECT_EQ(graph.Lines()[2].samples, (Samples{0, 0, 0, 0}));
    const std::pair<int, int> counts[] = {{300, 32}, {301, 33}, {309, 33}, {0, 2}, {-50, 1}};
    for (const auto& [width, count] : counts) EXPECT_EQ(VisibleSampleCount(width, 10), count) << width;
}

TEST(PushGraphSamplesTest, GridMovesWithTheSamples) {
    PushGraphSamples graph({.maximum = 1000});
    graph.SetPixels(7, 20);
    graph.AddLine(0);
    const auto push = [&](int count) {
        for (int sample = 0; sample < count; ++sample) graph.Push(5, 0);
        graph.Update();
        const int offset = graph.GridOffset();
        graph.PrepareToPaint(3 * 7);  // shows five samples
        return offset;
    };
    EXPECT_EQ(push(3), 0) << "never painted: nobody knows how many are visible";
    const std::pair<int, int> rows[] = {{1, 0}, {1, 13}, {1, 6}, {1, 19}, {2, 5}};
    for (const auto& [count, offset] : rows) EXPECT_EQ(push(count), offset) << "nothing moves before the fifth";
}

}  // namespace brennvar
