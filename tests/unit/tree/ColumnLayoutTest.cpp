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

TEST(ColumnLayoutTest, WidensAndRemembersAndFindsWhatIsBelowTheMouse) {
    ColumnLayout layout = ThreeColumns();
    layout.Widen(2, 90);
    layout.Widen(0, 20);  // is wider already
    layout.Fit(400);
    EXPECT_EQ(WidthsOf(layout), (std::vector{100, 210, 90}));
    layout.Restore(std::vector{10, 1});
    EXPECT_EQ(WidthsOf(layout), (std::vector{30, 280, 90}));
    layout.Restore(std::vector{100, 1, 100, 7});
    EXPECT_EQ(WidthsOf(layout), (std::vector{100, 200, 100}));
    const std::pair<int, int> columns[] = {{-1, -1}, {0, 0},   {99, 0},  {100, 1},
                                           {299, 1}, {300, 2}, {399, 2}, {400, -1}};
    for (const auto& [x, column] : columns) EXPECT_EQ(layout.ColumnAt(x), column) << x;
    const std::pair<int, int> dividers[] = {{0, -1}, {96, -1}, {97, 0}, {103, 0}, {104, -1}, {300, 1}, {403, 2}};
    for (const auto& [x, column] : dividers) EXPECT_EQ(layout.DividerAt(x, 3), column) << x;
    layout.Set({{5, 20, false}, {0, 0, false}});
    EXPECT_EQ(WidthsOf(layout), (std::vector{20, 0}));
    EXPECT_EQ(layout.DividerAt(20, 3), 1) << "the one that can be opened again";
}

TEST(ColumnLayoutTest, SomeGiveWayWhereThereIsNoRoomForAll) {
    ColumnLayout layout;
    layout.Set({{100, 30, false}, {70, 30, false, 2}, {60, 30, false, 2}, {40, 30, false, 1}, {50, 80, true}});
    struct Case {
        int room;
        std::vector<int> expected;
    };
    const Case cases[] = {{360, {100, 70, 60, 40, 90}}, {350, {100, 70, 60, 40, 80}},
                          {349, {100, 0, 0, 40, 209}},                              // together
                          {219, {100, 0, 0, 0, 119}},   {150, {100, 0, 0, 0, 80}},  // those that stay need more
                          {350, {100, 70, 60, 40, 80}}};
    for (const Case& test : cases) {
        layout.Fit(test.room);
        EXPECT_EQ(WidthsOf(layout), test.expected) << test.room;
    }
    layout.Fit(349);
    EXPECT_EQ(layout.WantedWidth(1), 70) << "is remembered";
    EXPECT_EQ(layout.DividerAt(100, 3), 0) << "none of what cannot be seen";
    EXPECT_EQ(layout.ColumnAt(100), 3);
}

}  // namespace
}  // namespace brennvar
