#include "controls/PushGraph_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"
#include "ui/ChildControls_win.h"

namespace brennvar {
namespace {

TEST(PushGraphTest, DrawsEachSampleAtItsHeightAndTellsTheLatest) {
    if (Scale(100) != 100) GTEST_SKIP() << "heights are counted at 96 pixels per inch";
    constexpr COLORREF kLine = RGB(0, 255, 0);
    constexpr int kBottom = 130;  // the plot is 100 high: a sample of a range of 100 stands as high as it counts
    const test::TestSkin skin;
    const Look look = skin.MakeLook();
    const test::ControlWindow window;
    PushGraphSamples samples{{.maximum = 100}};
    C2DPushGraph graph{samples};
    samples.AddLine(0);
    ASSERT_TRUE(graph.Create(window.Window(), 1, "Attacks", {look.skin, "GRAPH_IN", kLine}, look));
    graph.Place({10, 10, 210, 150});
    for (const int value : {20, 20, 90, 500, 500, 50, 50}) {  // ten pixels from one to the next; 500 is cut to 100
        samples.Push(value, 0);
        samples.Update();
        graph.Update(std::to_string(value));
    }
    const test::Screenshot picture(graph.Window());
    struct Point {
        int x, height;
    };
    for (const auto& [x, height] : {Point{5, 20}, {20, 90}, {35, 100}, {55, 50}}) {
        int top = 0;  // the highest pixel of the line in this column
        while (top < kBottom && picture.At(x, top) != kLine) ++top;
        EXPECT_EQ(top, kBottom - height) << x;
    }
    EXPECT_EQ(TextOfWindow(graph.Window()), "Attacks: 50");
}

}  // namespace
}  // namespace brennvar
