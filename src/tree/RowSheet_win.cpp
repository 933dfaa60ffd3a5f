#include "tree/RowSheet_win.h"

#include <algorithm>

namespace brennvar {

void RowSheet::Begin(HDC like, SIZE row, int countInSight) {
    const auto count = static_cast<std::size_t>(std::max(1, countInSight));
    const bool fits = m_bitmap.Dc() && m_rowHeight == row.cy && m_bitmap.Size().cx >= row.cx;
    if (fits && m_contents.size() >= count) return;
    m_rowHeight = row.cy;
    // As wide as it was at least: a window that is being sized does not need a new one at each step.
    const LONG width = m_bitmap.Dc() ? std::max(m_bitmap.Size().cx, row.cx) : row.cx;
    m_contents.assign(count, {});
    if (m_bitmap.Make(like, {width, row.cy * static_cast<LONG>(count)})) return;
    // One row after the other, through the same place.
    m_contents.assign(1, {});
    (void)m_bitmap.Make(like, row);
}

RowSheet::Place RowSheet::PlaceOf(int row, const std::string& content) {
    const std::size_t at = static_cast<std::size_t>(row) % m_contents.size();
    const bool isPainted = !content.empty() && m_contents[at] == content;
    m_contents[at] = content;
    return {m_bitmap.Dc(), static_cast<int>(at) * m_rowHeight, isPainted};
}

}  // namespace brennvar
