// The process has no more GDI objects to give while this lasts: bitmaps, brushes and DCs are refused.
#pragma once

#include <vector>

#include "base/Windows_win.h"

namespace brennvar::test {

class NoGdiObjects {
public:
    // So many may still be made.
    explicit NoGdiObjects(std::size_t left = 0) {
        // More than a process may have anywhere.
        constexpr std::size_t kMost = 100000;
        m_taken.reserve(kMost);
        while (m_taken.size() < kMost) {
            const HBRUSH brush = ::CreateSolidBrush(RGB(1, 2, 3));
            if (!brush) break;
            m_taken.push_back(brush);
        }
        m_hasReachedTheEnd = m_taken.size() < kMost;
        for (; left > 0 && !m_taken.empty(); --left) Free();
    }
    NoGdiObjects(const NoGdiObjects&) = delete;
    NoGdiObjects& operator=(const NoGdiObjects&) = delete;
    ~NoGdiObjects() {
        while (!m_taken.empty()) Free();
    }
    // False: the system has no end of them, and the test shows nothing.
    [[nodiscard]] bool HasReachedTheEnd() const { return m_hasReachedTheEnd; }

private:
    void Free() {
        ::DeleteObject(m_taken.back());
        m_taken.pop_back();
    }

    std::vector<HBRUSH> m_taken;
    bool m_hasReachedTheEnd = false;
};

}  // namespace brennvar::test
