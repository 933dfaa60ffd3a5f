// Which rows of a list are shown, and in what order: those that hold what the user looks for, sorted by a column.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace brennvar {

struct RowOrder {
    static constexpr int kAsRead = -1;

    std::string searched;  // in any cell, without regard to the case of ASCII letters; empty: all rows
    int column = kAsRead;  // sorted by it, or in the order in which the rows were read
    bool isAscending = true;
    bool isNumber = false;  // the column holds whole numbers
};

// The text of a cell: row, column.
using RowText = std::function<std::string(int row, int column)>;

// The numbers of the rows to show, in order. Equal rows stay in the order in which they were read.
[[nodiscard]] std::vector<int> ArrangeRows(int rowCount, int columnCount, const RowText& text,
                                           const RowOrder& order);

}  // namespace brennvar
