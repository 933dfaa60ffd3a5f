// Which rows of a list are shown, and in what order: those that hold what the user looks for, sorted by a column.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
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

// Arranges one list again and again. The texts of its rows are asked for once, when they are first searched, sorted
// or prepared, and kept in lower case, so that each key stroke of a search only goes through them.
class RowArranger {
public:
    // Rows or texts have changed: what was prepared is dropped.
    void Forget();
    // Asks for the texts, if it has not: before the user types, so that the first key is not the one that waits.
    void Prepare(const ListRows& source, int columnCount);
    // The numbers of the rows to show, in order. Equal rows stay in the order in which they were read.
    [[nodiscard]] std::vector<int> Arrange(const ListRows& source, int columnCount, const RowOrder& order);

private:
    void Sort(const ListRows& source, const RowOrder& order);
    [[nodiscard]] std::size_t CellStart(int row, int column) const {
        return m_starts[static_cast<std::size_t>(row) * m_columnCount + static_cast<std::size_t>(column)];
    }
    [[nodiscard]] std::string_view Cell(int row, int column) const;
    // One entry for each row: whether it holds the text.
    [[nodiscard]] std::vector<bool> Search(const std::string& searched) const;

    bool m_isPrepared = false;
    int m_rowCount = 0;
    std::size_t m_columnCount = 0;
    std::string m_texts;                // of all cells, row by row, each with a zero behind it
    std::vector<std::size_t> m_starts;  // of each cell, and the end
    // All rows, sorted like this; empty while they are not.
    std::vector<int> m_sorted;
    RowOrder m_sortedBy;
};

}  // namespace brennvar
