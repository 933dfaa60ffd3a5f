#include "tree/ColumnLayout.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(ColumnLayoutTest, OneColumnTakesTheRoomThatTheOthersLeaveOrGiveWay) {
    const std::vector<ColumnLayout::Column> three = {{100, 30, false}, {50, 80, true}, {60, 30, false}};
    const std::vector<ColumnLayout::Column> five = {
        {100, 30, false}, {70, 30, false, 2}, {60, 30, false, 2}, {40, 30, false, 1}, {50, 80, true}};
    using Widths = std::vector<int>;
    const struct {
        int room, column, width;  // that it is dragged to
        Widths expected;
    } rows[] = {
        {400, 0, 130, {130, 210, 60}},
        {400, 0, 5, {30, 310, 60}},  // its least
        {400, 1, 250, {100, 250, 50}},
        {400, 1, 390, {100, 270, 30}},  // the next one gives way, as far as it can
        {400, 1, 100, {100, 100, 200}},
        {400, 1, 10, {100, 80, 220}},  // the taker's least
        {400, 2, 90, {100, 210, 90}},
        {200, 0, 100, {100, 80, 60}},
        {360, 4, 150, {100, 70, 60, 40, 90}},  // nobody behind it gives way
        {350, 0, 100, {100, 70, 60, 40, 80}},
        {349, 0, 100, {100, 0, 0, 40, 209}},  // together
        {219, 0, 100, {100, 0, 0, 0, 119}},
        {150, 0, 100, {100, 0, 0, 0, 80}},  // those that stay need more
    };
    for (const auto& row : rows) {
        ColumnLayout layout;
        layout.Set(row.expected.size() == 3 ? three : five);
        layout.Fit(row.room);
        layout.Drag(row.column, row.width);
        for (int column = 0; column < layout.Count(); ++column) {
            EXPECT_EQ(layout.Width(column), row.expected.at(static_cast<std::size_t>(column)))
                << row.room << ' ' << row.column << ' ' << row.width << ' ' << column;
        }
        // What has given way is remembered, and found neither by the pointer nor by its divider.
        if (row.room > 349 || row.expected.size() == 3) continue;
        EXPECT_EQ(layout.WantedWidth(1), 70);
        EXPECT_EQ(layout.DividerAt(100, 3), 0);
        EXPECT_EQ(layout.ColumnAt(100), row.room == 349 ? 3 : 4);
    }
    ColumnLayout layout;
    layout.Set(three);
    layout.Widen(2, 90);
    layout.Restore(Widths{10, 1, 20, 7});
    EXPECT_EQ((Widths{layout.Width(0), layout.Width(1), layout.Width(2)}), (Widths{30, 80, 90}));
}

}  // namespace brennvar
