// What a list shows of its entries, and what it finds of them while somebody types.
#include "tree/VisibleRows.h"

#include <gtest/gtest.h>

#include <numeric>

#include "tree/TypedSearch.h"

namespace brennvar {
namespace {

using Numbers = std::vector<int>;

Numbers EntriesOf(const VisibleRows& rows) {
    Numbers entries;
    for (int row = 0; row < rows.RowCount(); ++row) {
        entries.push_back(rows.EntryOf(row));
        EXPECT_EQ(rows.RowOf(entries.back()), row);
    }
    return entries;
}

TEST(VisibleRowsTest, LeavesOutWhatIsBelowACollapsedEntry) {
    VisibleRows rows;
    rows.SetParents(Numbers{-1, 0, 0, 2, -1, 4});
    rows.SetExpanded(2, false);
    EXPECT_EQ(EntriesOf(rows), (Numbers{0, 1, 2, 4, 5}));
    EXPECT_EQ(rows.RowOf(3), VisibleRows::kNone);
    rows.SetExpanded(0, false);
    rows.SetExpanded(2, true);  // below a collapsed one
    EXPECT_EQ(EntriesOf(rows), (Numbers{0, 4, 5}));
    // Another entry has come: the state of the others stays.
    rows.SetParents(Numbers{-1, 0, 0, 2, -1, 4, 4}, false);
    EXPECT_EQ(EntriesOf(rows), (Numbers{0, 4, 5, 6}));
    rows.SetAllExpanded(true);
    EXPECT_EQ(EntriesOf(rows), (Numbers{0, 1, 2, 3, 4, 5, 6}));
    // A chain as deep as somebody likes.
    constexpr int kDepth = 300'000;
    Numbers parents(kDepth);
    std::iota(parents.begin(), parents.end(), -1);
    rows.SetParents(parents);
    EXPECT_EQ(rows.LevelOf(kDepth - 1), kDepth - 1);
}

TEST(VisibleRowsTest, ShowsEveryEntryOnceWhateverTheParentsAre) {
    const std::pair<Numbers, Numbers> cases[] = {
        {{-1, -1, 0, 1, 0}, {0, 2, 4, 1, 3}},  // children go below their parent
        {{2, -1, -1}, {1, 2, 0}},              // before it in the list
        {{0, 5, -7}, {0, 1, 2}},               // its own parent, no such entry, below zero
        {{1, 2, 0, 0}, {2, 1, 0, 3}},          // a circle is broken
    };
    for (const auto& [parents, expected] : cases) {
        VisibleRows rows;
        rows.SetParents(parents);
        EXPECT_EQ(EntriesOf(rows), expected) << testing::PrintToString(parents);
    }
}

TEST(TypedSearchTest, LooksForAllThatWasTypedUntilAPause) {
    const struct {
        char typed;
        int at;  // ms
        const char* wanted;
        int start;  // when row 5 has the focus
    } rows[] = {
        {'s', 5000, "s", 6},   {'v', 5999, "sv", 5},                       // the row that was found may still fit
        {'v', 6100, "svv", 5},                                             // only a letter alone is repeated
        {'s', 7100, "s", 6},   {'s', 7200, "s", 6},  {'s', 7300, "s", 6},  // after a pause, again and again
        {'a', 7400, "sa", 5},
    };
    TypedSearch search;
    for (const auto& row : rows) {
        search.Type(row.typed, std::chrono::milliseconds(row.at));
        EXPECT_EQ(search.Wanted(), row.wanted) << row.at;
        EXPECT_EQ(search.StartRow(5), row.start) << row.at;
    }
    EXPECT_EQ(search.StartRow(-1), 0);
}

}  // namespace
}  // namespace brennvar
