#include "lists/ListRows.h"

#include <charconv>

namespace brennvar {

std::uint64_t ListRows::SortNumber(int row, int column) const {
    const std::string text = CellText(row, column);
    std::uint64_t number = 0;  // what is no number stands first
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

}  // namespace brennvar
