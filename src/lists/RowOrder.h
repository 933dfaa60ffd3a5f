// Which rows of a list are shown, and in what order: those that hold what the user looks for, sorted by a column.
#pragma once

#include <string>
#include <vector>

#include "lists/ListRows.h"

namespace brennvar {

struct RowOrder {
    static constexpr int kAsRead = -1;

    std::string searched;  // in any cell, without regard to the case of ASCII letters; empty: all rows
    int column = kAsRead;  // sorted by it, or in the order in which the rows were read
    bool isAscending = true;
    bool isNumber = false;  // by the numbers of the column, else by its texts
};

// Arranges one list again and again. No texts are kept: those of a cell are asked for when they are searched or
// sorted, which takes less time than the memory for all of them would, unless the list has them at hand. A search
// that goes on from the last one, as a user types, only asks for the rows that were found.
class RowArranger {
public:
    // Rows or texts have changed: what was found and sorted is dropped.
    void Forget();
    // The numbers of the rows to show, in order. Equal rows stay in the order in which they were read.
    [[nodiscard]] std::vector<int> Arrange(const ListRows& source, int columnCount, const RowOrder& order);

private:
    void Sort(const ListRows& source, const RowOrder& order);
    void Search(const ListRows& source, int columnCount, const std::string& text);

    int m_rowCount = 0;
    // All rows, sorted like this; empty while they are not.
    std::vector<int> m_sorted;
    RowOrder m_sortedBy;
    // The rows that hold this text, in lower case, in the order in which they were read; no text: not searched.
    std::vector<int> m_found;
    std::string m_foundBy;
};

}  // namespace brennvar
