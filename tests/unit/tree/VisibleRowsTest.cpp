#include "tree/VisibleRows.h"

#include <gtest/gtest.h>

#include <numeric>

namespace brennvar {
namespace {

std::vector<int> EntriesOf(const VisibleRows& rows) {
    std::vector<int> entries;
    for (int row = 0; row < rows.RowCount(); ++row) {
        entries.push_back(rows.EntryOf(row));
        EXPECT_EQ(rows.RowOf(entries.back()), row);
    }
    return entries;
}

TEST(VisibleRowsTest, LeavesOutWhatIsBelowACollapsedEntry) {
    VisibleRows rows;
    rows.SetParents(std::vector{-1, 0, 0, 2, -1, 4});
    EXPECT_EQ(EntriesOf(rows), (std::vector{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(rows.LevelOf(3), 2);
    EXPECT_TRUE(rows.HasChildren(2));
    EXPECT_FALSE(rows.HasChildren(1));
    rows.SetExpanded(2, false);
    EXPECT_EQ(EntriesOf(rows), (std::vector{0, 1, 2, 4, 5}));
    EXPECT_EQ(rows.RowOf(3), VisibleRows::kNone);
    rows.SetExpanded(0, false);
    rows.SetExpanded(2, true);  // below a collapsed one
    EXPECT_EQ(EntriesOf(rows), (std::vector{0, 4, 5}));
    // Another entry has come: the state of the others stays.
    rows.SetParents(std::vector{-1, 0, 0, 2, -1, 4, 4}, false);
    EXPECT_EQ(EntriesOf(rows), (std::vector{0, 4, 5, 6}));
    rows.SetAllExpanded(true);
    EXPECT_EQ(EntriesOf(rows), (std::vector{0, 1, 2, 3, 4, 5, 6}));
    rows.SetParents({});
    EXPECT_EQ(rows.RowCount(), 0);
}

TEST(VisibleRowsTest, ShowsEveryEntryOnceWhateverTheParentsAre) {
    struct Case {
        std::vector<int> parents;
        std::vector<int> expected;
    };
    const Case cases[] = {
        {{-1, -1, 0, 1, 0}, {0, 2, 4, 1, 3}},  // children go below their parent
        {{2, -1, -1}, {1, 2, 0}},              // before it in the list
        {{0, 5, -7}, {0, 1, 2}},               // its own parent, no such entry, below zero
        {{1, 0}, {1, 0}},                      // a circle is broken
        {{1, 2, 0, 0}, {2, 1, 0, 3}},
    };
    for (const Case& row : cases) {
        VisibleRows rows;
        rows.SetParents(row.parents);
        EXPECT_EQ(EntriesOf(rows), row.expected) << testing::PrintToString(row.parents);
    }
}

TEST(VisibleRowsTest, HoldsADeepChain) {
    constexpr int kDepth = 300'000;
    std::vector<int> parents(kDepth);
    std::iota(parents.begin(), parents.end(), -1);
    VisibleRows rows;
    rows.SetParents(parents);
    EXPECT_EQ(rows.RowCount(), kDepth);
    EXPECT_EQ(rows.LevelOf(kDepth - 1), kDepth - 1);
    rows.SetExpanded(9, false);
    EXPECT_EQ(rows.RowCount(), 10);
}

}  // namespace
}  // namespace brennvar
