#include "advanced/RuleMoves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <string>

namespace brennvar {
namespace {

constexpr int kCount = 6;

std::vector<int> InOrder() {
    std::vector<int> order(kCount);
    std::iota(order.begin(), order.end(), 0);
    return order;
}

// Place by place, as the service does it: at the ends nothing moves.
std::vector<int> Moved(const std::vector<RowMove>& moves) {
    std::vector<int> order = InOrder();
    for (const RowMove& move : moves) {
        for (int step = 0; step < std::abs(move.places); ++step) {
            const auto at = std::find(order.begin(), order.end(), move.row);
            const bool isUp = move.places < 0;
            if (isUp ? at == order.begin() : at + 1 == order.end())
                ADD_FAILURE() << "beyond the end";
            else
                std::iter_swap(at, isUp ? at - 1 : at + 1);
        }
    }
    return order;
}

// By one place, each that finds an unselected neighbour there.
void Nudge(std::vector<int>& order, const std::vector<int>& rows, bool isUp) {
    const auto isSelected = [&](int row) { return std::find(rows.begin(), rows.end(), row) != rows.end(); };
    if (!isUp) std::reverse(order.begin(), order.end());
    for (std::size_t at = 1; at < order.size(); ++at) {
        if (isSelected(order[at]) && !isSelected(order[at - 1])) std::swap(order[at], order[at - 1]);
    }
    if (!isUp) std::reverse(order.begin(), order.end());
}

TEST(RuleMovesTest, EverySelectionComesToWhereItIsMoved) {
    for (unsigned chosen = 0; chosen < 1U << kCount; ++chosen) {
        std::vector<int> rows;
        for (int row = 0; row < kCount; ++row) {
            if ((chosen >> row & 1U) != 0) rows.push_back(row);
        }
        for (int before = 0; before <= kCount; ++before) {
            std::vector<int> expected;
            for (int row = 0; row <= kCount; ++row) {
                if (row == before) expected.insert(expected.end(), rows.begin(), rows.end());
                if (row < kCount && (chosen >> row & 1U) == 0) expected.push_back(row);
            }
            EXPECT_EQ(Moved(MovesBefore(rows, before)), expected) << chosen << " before " << before;
        }
        for (const int places : {-7, -2, -1, 1, 2, 7}) {
            std::vector<int> expected = InOrder();
            for (int step = 0; step < std::abs(places); ++step) Nudge(expected, rows, places < 0);
            // In between, those in front wait at the end while the others close up.
            EXPECT_EQ(Moved(MovesBy(rows, kCount, places)), expected) << chosen << " by " << places;
        }
    }
    EXPECT_TRUE(MovesBefore(std::vector{2, 3}, 3).empty()) << "they stand there";
}

}  // namespace
}  // namespace brennvar
