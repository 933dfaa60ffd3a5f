// A clock of the program that a test moves: the real one and an offset, which both share through a section of
// memory.
#pragma once

#include <cstdint>

#include "base/Handles_win.h"

namespace brennvar::test {

class TestClockOffset {
public:
    // Made by whoever comes first, with an offset of 0.
    TestClockOffset()
        : m_section(::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(std::int64_t),
                                         "BrennvarTestClock")),
          m_view(static_cast<volatile std::int64_t*>(
              ::MapViewOfFile(m_section.Get(), FILE_MAP_WRITE, 0, 0, sizeof(std::int64_t)))) {}
    TestClockOffset(const TestClockOffset&) = delete;
    TestClockOffset& operator=(const TestClockOffset&) = delete;
    ~TestClockOffset() { ::UnmapViewOfFile(const_cast<std::int64_t*>(m_view)); }

    // In 100-nanosecond units.
    [[nodiscard]] std::int64_t Get() const { return *m_view; }
    void Set(std::int64_t offset) { *m_view = offset; }

private:
    UniqueHandle<KernelHandleTraits> m_section;
    volatile std::int64_t* m_view;
};

}  // namespace brennvar::test
