// What this process holds of the system's objects, to be compared before and after something that must leave none.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <functional>
#include <ostream>

#include "base/Windows_win.h"

namespace brennvar::test {

struct ObjectCounts {
    int gdi = 0;
    int windows = 0;  // of this thread, with their children
    int handles = 0;  // kernel objects
    friend bool operator==(const ObjectCounts&, const ObjectCounts&) = default;
    friend std::ostream& operator<<(std::ostream& out, const ObjectCounts& counts) {
        return out << "GDI " << counts.gdi << ", windows " << counts.windows << ", handles " << counts.handles;
    }
};

// Wine's GetGuiResources has no numbers; the table of GDI objects that every process maps has them there: entries
// of 24 bytes with the type at offset 14.
inline int CountGdiObjects() {
    if (const DWORD count = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS)) return static_cast<int>(count);
    constexpr std::size_t kEntries = 16384, kEntrySize = 24, kTypeOffset = 14, kTableInPeb = 0xF8;
    // The process environment block's address is the second of six words. Not linked: the import library is no part
    // of every tool chain.
    std::array<const std::byte*, 6> basic{};
    constexpr ULONG kBasicInformation = 0;
    using Query = LONG(NTAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*);
    const auto query = reinterpret_cast<Query>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "NtQueryInformationProcess")));
    if (query(::GetCurrentProcess(), kBasicInformation, basic.data(), sizeof(basic), nullptr) < 0) return -1;
    const auto* table = *reinterpret_cast<const std::byte* const*>(basic[1] + kTableInPeb);
    int count = 0;
    for (std::size_t i = 0; i < kEntries; ++i) count += table[i * kEntrySize + kTypeOffset] != std::byte{} ? 1 : 0;
    return count;
}

inline int CountWindows() {
    int count = 0;
    const auto countOne = [](HWND window, LPARAM counter) -> BOOL {
        ++*reinterpret_cast<int*>(counter);
        ::EnumChildWindows(
            window,
            [](HWND, LPARAM inner) -> BOOL {
                ++*reinterpret_cast<int*>(inner);
                return TRUE;
            },
            counter);
        return TRUE;
    };
    ::EnumThreadWindows(::GetCurrentThreadId(), countOne, reinterpret_cast<LPARAM>(&count));
    return count;
}

// Handles are multiples of four, and the lowest one that is free is given away first: so many numbers hold all that
// tests open, and what they leave. Wine does not count them for a program that asks (GetProcessHandleCount).
inline int CountHandles() {
    constexpr ULONG_PTR kNumbers = 4096;
    int count = 0;
    for (ULONG_PTR number = 1; number < kNumbers; ++number) {
        DWORD flags = 0;
        count += ::GetHandleInformation(reinterpret_cast<HANDLE>(4 * number), &flags) ? 1 : 0;
    }
    return count;
}

inline ObjectCounts CountObjects() {
    return {.gdi = CountGdiObjects(), .windows = CountWindows(), .handles = CountHandles()};
}

// Fails when doing it often leaves more or fewer objects than there were. The first rounds fill what the system
// keeps for later.
inline void ExpectNothingLeftBy(const std::function<void()>& open) {
    for (int i = 0; i < 10; ++i) open();
    const ObjectCounts before = CountObjects();
    for (int i = 0; i < 100; ++i) open();
    EXPECT_EQ(CountObjects(), before);
}

}  // namespace brennvar::test
