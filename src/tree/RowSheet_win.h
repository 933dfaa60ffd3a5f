// The rows of a list that have been painted last, one below the other in a bitmap: a row that is asked for again
// and holds the same is copied. Painting a row is mostly its letters, which take ten times as long as the copy.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "ui/KeptBitmap_win.h"

namespace brennvar {

class RowSheet {
public:
    // Where one row stands in the sheet.
    struct Place {
        HDC dc = nullptr;  // null without memory
        int top = 0;
        bool isPainted = false;  // with this content
    };
    // Before rows are asked for: so many of them are seen at a time, so large at most.
    void Begin(HDC like, SIZE row, int countInSight);
    // The row with this number, and everything that its look is made of. What is not painted yet has to be before
    // the next row is asked for.
    [[nodiscard]] Place PlaceOf(int row, const std::string& content);

private:
    CKeptBitmap m_bitmap;
    int m_rowHeight = 0;
    std::vector<std::string> m_contents;  // by place; empty: not painted
};

}  // namespace brennvar
