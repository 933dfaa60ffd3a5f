#include "controls/PushGraph_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"
#include "ui/ChildControls_win.h"

namespace brennvar {
namespace {

constexpr COLORREF kLine = RGB(0, 255, 0);
constexpr int kWidth = 200;
constexpr int kHeight = 140;
constexpr int kPlotHeight = kHeight - 30 - 10;  // 100: a sample of a range of 100 stands as high as it counts

// The colours that a skin without graph colours has, on black.
class PushGraphTest : public testing::Test {
protected:
    PushGraphTest() {
        samples.AddLine(0);
        EXPECT_TRUE(graph.Create(window.Window(), 1, "Attacks", {look.skin, "GRAPH_IN", kLine}, look));
        graph.Place({10, 10, 10 + kWidth, 10 + kHeight});
    }
    void Push(int value) {
        samples.Push(value, 0);
        samples.Update();
        graph.Update(std::to_string(value));
    }

    const test::TestSkin skin;
    const Look look = skin.MakeLook();
    const test::ControlWindow window;
    PushGraphSamples samples{{.maximum = 100}};
    C2DPushGraph graph{samples};
};

// The highest pixel of the line in a column; -1: none.
int LineTop(const test::Screenshot& picture, int x) {
    for (int y = 0; y < kHeight; ++y) {
        if (picture.At(x, y) == kLine) return y;
    }
    return -1;
}

TEST_F(PushGraphTest, DrawsEachSampleAtItsHeightAndTellsTheLatest) {
    if (Scale(100) != 100) GTEST_SKIP() << "heights are counted at 96 pixels per inch";
    constexpr int kBottom = 30 + kPlotHeight;
    const int values[] = {20, 20, 90, 500, 500, 50, 50};  // ten pixels from one to the next; 500 is cut to 100
    for (const int value : values) Push(value);
    const test::Screenshot picture(graph.Window());
    const struct { int x, height; } points[] = {{5, 20}, {20, 90}, {35, 100}, {55, 50}};
    for (const auto& [x, height] : points) EXPECT_EQ(LineTop(picture, x), kBottom - height) << x;
    EXPECT_EQ(LineTop(picture, 80), -1);  // nothing has come yet
    // A smaller range leaves earlier samples where they are: above the plot, and not in the title.
    samples.SetRange({.maximum = 40});
    Push(10);
    const test::Screenshot rescaled(graph.Window());
    EXPECT_EQ(LineTop(rescaled, 35), -1);
    EXPECT_EQ(LineTop(rescaled, 5), kBottom - 50);
    EXPECT_EQ(TextOfWindow(graph.Window()), "Attacks: 10");
}

TEST_F(PushGraphTest, PaintsIntoAPlaceWithoutRoom) {
    for (const LONG size : {0L, 1L, 41L}) {
        graph.Place({0, 0, size, size});
        Push(1);
        ::RedrawWindow(graph.Window(), nullptr, nullptr, RDW_UPDATENOW);
    }
    EXPECT_EQ(samples.Lines()[0].samples.back(), 1);
}

}  // namespace
}  // namespace brennvar
