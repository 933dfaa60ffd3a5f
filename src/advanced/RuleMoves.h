// How rules get to another place in their order: the service moves one rule by one place at a time, so that a way
// is counted in the rules that are passed. Rules that move together keep their order and do not pass one another.
#pragma once

#include <span>
#include <vector>

namespace brennvar {

// One rule on its way: so many places towards the end, below zero towards the beginning.
struct RowMove {
    int row = 0;  // before all moves
    int places = 0;
    friend bool operator==(const RowMove&, const RowMove&) = default;
};

// In the order in which the moves are made: first those towards the beginning, from the top, then those towards the
// end, from the bottom. Rows that stay have none. rows: in ascending order, each once, below count.
//
// All by so many places, as far as there are places.
[[nodiscard]] std::vector<RowMove> MovesBy(std::span<const int> rows, int count, int places);
// All of them, one behind the other, before this row; count: behind all.
[[nodiscard]] std::vector<RowMove> MovesBefore(std::span<const int> rows, int before);

}  // namespace brennvar
