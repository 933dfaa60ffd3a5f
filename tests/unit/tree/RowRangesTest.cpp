#include "tree/RowRanges.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

namespace brennvar {
namespace {

TEST(RowRangesTest, HoldsWhatASetOfRowsHolds) {
    std::mt19937 random(7);
    const auto number = [&](int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); };
    for (int round = 0; round < 200; ++round) {
        RowRanges rows;
        std::set<int> expected;
        for (int step = 0; step < 40; ++step) {
            const int first = number(30);
            const int last = first + number(6) - 1;
            const bool isAdding = number(2) == 0;
            isAdding ? rows.Add(first, last) : rows.Remove(first, last);
            for (int row = first; row <= last; ++row) {
                if (isAdding) expected.insert(row);
                if (!isAdding) expected.erase(row);
            }
            for (int row = -1; row < 40; ++row) {
                ASSERT_EQ(rows.Contains(row), expected.contains(row)) << round << ' ' << step << ' ' << row;
            }
            ASSERT_EQ(rows.Count(), static_cast<std::int64_t>(expected.size()));
            for (std::size_t i = 1; i < rows.Ranges().size(); ++i) {
                ASSERT_GT(rows.Ranges()[i].first, rows.Ranges()[i - 1].last + 1) << "not joined";
            }
        }
    }
}

}  // namespace
}  // namespace brennvar
