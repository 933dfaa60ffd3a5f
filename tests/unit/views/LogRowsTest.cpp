#include "views/LogRows.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

using Numbers = std::vector<std::uint32_t>;
using Order = LogRows::Order;

Numbers NumbersOf(const LogRows& rows) {
    Numbers numbers;
    for (int row = 0; row < rows.Count(); ++row) {
        numbers.push_back(rows.NumberOf(row));
        EXPECT_EQ(rows.RowOf(numbers.back()), row) << numbers.back();
    }
    return numbers;
}

TEST(LogRowsTest, NumbersRowsOfEveryKindOfList) {
    LogRows rows;
    rows.Restart(Order::NewestFirst, 10, false);  // all of a log
    rows.AddFound(3, {});
    EXPECT_EQ(NumbersOf(rows), (Numbers{9, 8, 7}));
    rows.AddAppended(2, {});
    EXPECT_EQ(NumbersOf(rows), (Numbers{11, 10, 9, 8, 7}));
    rows.AddFound(1, {});  // the listing goes on
    EXPECT_EQ(NumbersOf(rows), (Numbers{11, 10, 9, 8, 7, 6}));
    EXPECT_EQ(rows.RowOf(5), -1);
    EXPECT_EQ(rows.RowOf(12), -1);
    rows.Restart(Order::NewestFirst, 10, false);  // filtered
    rows.AddFound(0, {8, 5});
    rows.AddFound(0, {2});
    rows.AddAppended(0, {11, 14});
    EXPECT_EQ(NumbersOf(rows), (Numbers{14, 11, 8, 5, 2}));
    for (const std::uint32_t number : {0U, 3U, 9U, 12U, 15U}) EXPECT_EQ(rows.RowOf(number), -1) << number;
    rows.Restart(Order::NewestFirst, 10, true);  // sorted
    rows.AddFound(0, {3, 9, 1});
    rows.AddAppended(0, {10});
    EXPECT_EQ(NumbersOf(rows), (Numbers{10, 3, 9, 1}));
    EXPECT_EQ(rows.RowOf(2), -1);
    rows.Restart(Order::AsInFile, 0, false);  // packets
    rows.AddFound(2, {});
    rows.AddAppended(1, {});
    EXPECT_EQ(NumbersOf(rows), (Numbers{0, 1, 2}));
    rows.Restart(Order::AsInFile, 0, false);
    rows.AddFound(0, {4, 6});
    rows.AddAppended(0, {7});
    EXPECT_EQ(NumbersOf(rows), (Numbers{4, 6, 7}));
    EXPECT_EQ(rows.RowOf(5), -1);
}

TEST(LogRowsTest, KeepsASnapshotAsItWas) {
    LogRows rows;
    rows.Restart(Order::AsInFile, 0, false);
    rows.AddFound(0, {4, 6});
    const auto snapshot = rows.Snapshot();
    rows.AddFound(0, {9});
    rows.Restart(Order::NewestFirst, 3, false);
    EXPECT_EQ(snapshot(1), 6U);
    EXPECT_NE(snapshot(2), 9U);
}

}  // namespace
}  // namespace brennvar
