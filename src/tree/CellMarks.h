// Small signs beside the texts of a list, which tell by their shape and not by their colour alone.
#pragma once

#include <cstdint>

namespace brennvar {

// At the left edge of a row that came or went a moment ago: a whole bar, a broken bar.
enum class RowMark : std::uint8_t { None, New, Gone };

// Before a cell's text.
enum class CellGlyph : std::uint8_t {
    None,
    Filled,  // a disc: what goes on
    Hollow,  // a ring: what begins or ends
    Bar,     // a lying bar: what waits
};

}  // namespace brennvar
