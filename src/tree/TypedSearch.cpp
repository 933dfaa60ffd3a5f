#include "tree/TypedSearch.h"

#include <algorithm>

namespace brennvar {

void TypedSearch::Type(char lower, std::chrono::milliseconds now) {
    if (now - m_typedAt >= kPause) m_typed.clear();
    m_typedAt = now;
    const bool isRepeated = m_typed.size() == 1 && m_typed.front() == lower;
    m_mayStay = !m_typed.empty() && !isRepeated;
    if (!isRepeated) m_typed += lower;
}

int TypedSearch::StartRow(int focusedRow) const {
    return std::max(0, focusedRow + (m_mayStay ? 0 : 1));
}

}  // namespace brennvar
