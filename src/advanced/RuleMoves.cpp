#include "advanced/RuleMoves.h"

#include <algorithm>

namespace brennvar {
namespace {

// Each row moves by what stands for it in ways.
std::vector<RowMove> InOrder(std::span<const int> rows, std::span<const int> ways) {
    std::vector<RowMove> moves;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (ways[i] < 0) moves.push_back({.row = rows[i], .places = ways[i]});
    }
    for (std::size_t i = rows.size(); i-- > 0;) {
        if (ways[i] > 0) moves.push_back({.row = rows[i], .places = ways[i]});
    }
    return moves;
}

}  // namespace

std::vector<RowMove> MovesBy(std::span<const int> rows, int count, int places) {
    std::vector<int> ways;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        // Room for those of them that stand above it, and below it.
        const int first = static_cast<int>(i);
        const int last = count - static_cast<int>(rows.size() - i);
        ways.push_back(std::clamp(places, first - rows[i], last - rows[i]));
    }
    return InOrder(rows, ways);
}

std::vector<RowMove> MovesBefore(std::span<const int> rows, int before) {
    const auto above = std::lower_bound(rows.begin(), rows.end(), before) - rows.begin();
    std::vector<int> ways;
    // What each passes are the rows that stay.
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ways.push_back((before - static_cast<int>(above)) - (rows[i] - static_cast<int>(i)));
    }
    return InOrder(rows, ways);
}

}  // namespace brennvar
