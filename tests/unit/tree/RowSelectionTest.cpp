#include "tree/RowSelection.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

using Ranges = std::vector<RowRanges::Range>;
constexpr RowSelection::Keys kPlain{};
constexpr RowSelection::Keys kControl{.control = true};
constexpr RowSelection::Keys kShift{.shift = true};
constexpr RowSelection::Keys kBoth{.control = true, .shift = true};

RowSelection Multiple() {
    RowSelection selection;
    selection.SetMode(RowSelection::Mode::Multiple);
    return selection;
}

TEST(RowSelectionTest, ClicksWithControlAndShift) {
    RowSelection selection = Multiple();
    EXPECT_TRUE(selection.Click(5, kPlain));
    EXPECT_FALSE(selection.Click(5, kPlain));  // nothing has changed
    EXPECT_TRUE(selection.Click(8, kShift));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{5, 8}}));
    // The anchor stays where it was, also to the other side.
    EXPECT_TRUE(selection.Click(3, kShift));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{3, 5}}));
    EXPECT_TRUE(selection.Click(4, kControl));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{3, 3}, {5, 5}}));
    EXPECT_EQ(selection.Focused(), 4);
    // Control and Shift adds the range from the new anchor.
    EXPECT_TRUE(selection.Click(10, kControl));
    EXPECT_TRUE(selection.Click(12, kBoth));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{3, 3}, {5, 5}, {10, 12}}));
    EXPECT_TRUE(selection.Click(0, kPlain));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{0, 0}}));
}

TEST(RowSelectionTest, KeysMoveTheFocusAndSpaceSelects) {
    RowSelection selection = Multiple();
    EXPECT_TRUE(selection.MoveTo(2, kShift));  // without an anchor: from here
    EXPECT_FALSE(selection.MoveTo(4, kControl));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{2, 2}}));
    EXPECT_EQ(selection.Focused(), 4);
    EXPECT_TRUE(selection.ToggleFocused());
    EXPECT_TRUE(selection.MoveTo(5, kShift));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{4, 5}})) << "from the row that Space has selected";
    EXPECT_TRUE(selection.MoveTo(6, kBoth));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{4, 6}}));
    // A list of which one row is selected at a time.
    RowSelection single;
    EXPECT_TRUE(single.Click(3, kShift));
    EXPECT_TRUE(single.MoveTo(5, kBoth));
    EXPECT_FALSE(single.ToggleFocused());
    EXPECT_FALSE(single.SelectAll(9));
    EXPECT_EQ(single.Rows().Ranges(), (Ranges{{5, 5}}));
}

TEST(RowSelectionTest, AllAreSelectedAndCut) {
    RowSelection selection = Multiple();
    selection.MoveTo(6, kPlain);
    EXPECT_TRUE(selection.SelectAll(1'000'000));
    EXPECT_FALSE(selection.SelectAll(1'000'000));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{0, 999'999}}));
    EXPECT_EQ(selection.Focused(), 6);
    // The rest has gone.
    EXPECT_TRUE(selection.CutAt(3));
    EXPECT_EQ(selection.Rows().Ranges(), (Ranges{{0, 2}}));
    EXPECT_EQ(selection.Focused(), 2);
    EXPECT_TRUE(selection.CutAt(0));
    EXPECT_EQ(selection.Focused(), -1);
    EXPECT_FALSE(selection.ToggleFocused());
    EXPECT_FALSE(selection.SelectAll(0));
}

TEST(RowSelectionTest, GoesWithItsRows) {
    struct Row {
        int behind;
        int by;
        Ranges expected;
        int focused;
    };
    // Before: 2 to 4 and 8 to 9 are selected, the focus is on 8.
    const Row rows[] = {
        {1, 3, {{5, 7}, {11, 12}}, 11},          // all have moved
        {-1, 1, {{3, 5}, {9, 10}}, 9},           // from the top
        {3, 2, {{2, 3}, {6, 6}, {10, 11}}, 10},  // rows came into the middle of a range
        {9, 5, {{2, 4}, {8, 9}}, 8},             // behind all of them
        {2, -2, {{2, 2}, {6, 7}}, 6},            // 3 and 4 are gone
        {5, -3, {{2, 4}, {6, 6}}, 5},            // 6 to 8, the focus falls on the parent
        {1, -20, {}, 1},                         // everything behind it
        {-1, -3, {{0, 1}, {5, 6}}, 5},           // 0 to 2
        {-1, -20, {}, -1},
    };
    for (const Row& row : rows) {
        RowSelection selection = Multiple();
        RowRanges before;
        before.Add(2, 4);
        before.Add(8, 9);
        selection.Restore(before, 8);
        selection.MoveRowsBehind(row.behind, row.by);
        EXPECT_EQ(selection.Rows().Ranges(), row.expected) << row.behind << ' ' << row.by;
        EXPECT_EQ(selection.Focused(), row.focused) << row.behind << ' ' << row.by;
    }
}

}  // namespace
}  // namespace brennvar
