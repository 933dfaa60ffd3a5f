// Rows that can be searched and sorted: texts and numbers of cells. A model is one, and so is what another thread
// has read and not handed over yet.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brennvar {

class ListRows {
public:
    virtual ~ListRows() = default;
    [[nodiscard]] virtual int RowCount() const = 0;
    // What is searched and sorted: the text of the cell, where that can be had for less.
    [[nodiscard]] virtual std::string CellText(int row, int column) const = 0;
    // The texts of all cells of the row in lower case (ASCII letters), with a zero between two of them, where they
    // are at hand; valid until the rows change. Nothing: the cells are asked one by one.
    [[nodiscard]] virtual std::optional<std::string_view> SearchedText(int /*row*/) const { return std::nullopt; }
    // Of a cell in a column of numbers: its place among them. The number that its text begins with, if not said
    // otherwise.
    [[nodiscard]] virtual std::uint64_t SortNumber(int row, int column) const;
};

}  // namespace brennvar
