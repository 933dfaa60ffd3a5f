#include "tree/ColumnLayout.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

std::vector<int> WidthsOf(const ColumnLayout& layout) {
    std::vector<int> widths;
    for (int column = 0; column < layout.Count(); ++column) widths.push_back(layout.Width(column));
    return widths;
}

ColumnLayout ThreeColumns() {
    ColumnLayout layout;
    layout.Set({{100, 30, false}, {50, 80, true}, {60, 30, false}});
    layout.Fit(400);
    return layout;
}

TEST(ColumnLayoutTest, OneColumnTakesTheRoom) {
    ColumnLayout layout = ThreeColumns();
    EXPECT_EQ(WidthsOf(layout), (std::vector{100, 240, 60}));
    layout.Fit(200);
    EXPECT_EQ(WidthsOf(layout), (std::vector{100, 80, 60}));  // never below its least
    EXPECT_EQ(layout.Total(), 240);
}

TEST(ColumnLayoutTest, DividersMoveWithTheMouse) {
    struct Drag {
        int column;
        int width;
        std::vector<int> expected;
    };
    const Drag drags[] = {
        {0, 130, {130, 210, 60}},  {0, 5, {30, 310, 60}},    // its least
        {1, 250, {100, 250, 50}},                            // the next column gives way
        {1, 390, {100, 270, 30}},                            // as far as it can
        {1, 100, {100, 100, 200}}, {1, 10, {100, 80, 220}},  // the taker's least
        {2, 90, {100, 210, 90}},
    };
    for (const Drag& drag : drags) {
        ColumnLayout layout = ThreeColumns();
        layout.Drag(drag.column, drag.width);
        EXPECT_EQ(WidthsOf(layout), drag.expected) << drag.column << ' ' << drag.width;
    }
    // Behind the last column there is nobody to give way.
    ColumnLayout last;
    last.Set({{100, 30, false}, {100, 30, true}});
    last.Fit(300);
    last.Drag(1, 150);
    EXPECT_EQ(WidthsOf(last), (std::vector{100, 200}));
}

}  // namespace
}  // namespace brennvar
