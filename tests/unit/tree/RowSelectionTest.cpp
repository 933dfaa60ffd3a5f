#include "tree/RowSelection.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <span>

namespace brennvar {
namespace {

using Ranges = std::vector<RowRanges::Range>;

TEST(RowRangesTest, HoldsWhatASetOfRowsHolds) {
    std::mt19937 random(7);
    const auto number = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    RowRanges rows;
    std::set<int> expected;
    for (int step = 0; step < 8000; ++step) {
        const int first = number(30), last = first + number(6) - 1;
        const bool isAdding = number(2) == 0;
        isAdding ? rows.Add(first, last) : rows.Remove(first, last);
        for (int row = first; row <= last; ++row) {
            if (isAdding) expected.insert(row);
            if (!isAdding) expected.erase(row);
        }
        for (int row = -1; row < 40; ++row) ASSERT_EQ(rows.Contains(row), expected.contains(row)) << step;
        ASSERT_EQ(rows.Count(), static_cast<std::int64_t>(expected.size()));
        for (std::size_t i = 1; i < rows.Ranges().size(); ++i) {
            ASSERT_GT(rows.Ranges()[i].first, rows.Ranges()[i - 1].last + 1) << "not joined";
        }
    }
}

TEST(RowSelectionTest, ClicksAndKeysWithControlAndShift) {
    enum What { kClick, kMove, kToggle, kAll, kCut };
    constexpr RowSelection::Keys kPlain{}, kControl{.control = true}, kShift{.shift = true},
        kBoth{.control = true, .shift = true};
    struct Step {
        What what;
        int row;  // or how many there are
        RowSelection::Keys keys;
        bool changes;
        Ranges expected;
        int focused;
    };
    const Step many[] = {
        {kMove, 2, kShift, true, {{2, 2}}, 2},  // without an anchor: from here
        {kClick, 5, kPlain, true, {{5, 5}}, 5},
        {kClick, 5, kPlain, false, {{5, 5}}, 5},
        {kClick, 8, kShift, true, {{5, 8}}, 8},
        {kClick, 3, kShift, true, {{3, 5}}, 3},  // the anchor stays where it was
        {kClick, 4, kControl, true, {{3, 3}, {5, 5}}, 4},
        {kClick, 10, kControl, true, {{3, 3}, {5, 5}, {10, 10}}, 10},
        {kClick, 12, kBoth, true, {{3, 3}, {5, 5}, {10, 12}}, 12},
        {kClick, 2, kPlain, true, {{2, 2}}, 2},
        {kMove, 4, kControl, false, {{2, 2}}, 4},
        {kToggle, 0, kPlain, true, {{2, 2}, {4, 4}}, 4},
        {kMove, 5, kShift, true, {{4, 5}}, 5},  // from the row that Space has selected
        {kMove, 6, kBoth, true, {{4, 6}}, 6},
        {kAll, 1'000'000, kPlain, true, {{0, 999'999}}, 6},
        {kAll, 1'000'000, kPlain, false, {{0, 999'999}}, 6},
        {kCut, 3, kPlain, true, {{0, 2}}, 2},
        {kCut, 0, kPlain, true, {}, -1},
        {kToggle, 0, kPlain, false, {}, -1},
        {kAll, 0, kPlain, false, {}, -1},
    };
    const Step single[] = {{kClick, 3, kShift, true, {{3, 3}}, 3},
                           {kMove, 5, kBoth, true, {{5, 5}}, 5},
                           {kToggle, 0, kPlain, false, {{5, 5}}, 5},
                           {kAll, 9, kPlain, false, {{5, 5}}, 5}};
    for (const std::span<const Step> steps : {std::span<const Step>(many), std::span<const Step>(single)}) {
        RowSelection selection;
        if (steps.size() > 4) selection.SetMode(RowSelection::Mode::Multiple);
        for (std::size_t i = 0; i < steps.size(); ++i) {
            const Step& step = steps[i];
            const bool changed = step.what == kClick    ? selection.Click(step.row, step.keys)
                                 : step.what == kMove   ? selection.MoveTo(step.row, step.keys)
                                 : step.what == kToggle ? selection.ToggleFocused()
                                 : step.what == kAll    ? selection.SelectAll(step.row)
                                                        : selection.CutAt(step.row);
            EXPECT_EQ(changed, step.changes) << i;
            EXPECT_EQ(selection.Rows().Ranges(), step.expected) << i;
            EXPECT_EQ(selection.Focused(), step.focused) << i;
        }
    }
}

TEST(RowSelectionTest, GoesWithItsRows) {
    // Before: 2 to 4 and 8 to 9 are selected, the focus is on 8.
    const struct {
        int behind, by;
        Ranges expected;
        int focused;
    } rows[] = {
        {-1, 1, {{3, 5}, {9, 10}}, 9},           // from the top
        {3, 2, {{2, 3}, {6, 6}, {10, 11}}, 10},  // rows came into the middle of a range
        {9, 5, {{2, 4}, {8, 9}}, 8},             // behind all of them
        {5, -3, {{2, 4}, {6, 6}}, 5},            // 6 to 8 are gone, the focus falls on the parent
        {-1, -3, {{0, 1}, {5, 6}}, 5},           // 0 to 2
        {-1, -20, {}, -1},
    };
    for (const auto& row : rows) {
        RowSelection selection;
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
