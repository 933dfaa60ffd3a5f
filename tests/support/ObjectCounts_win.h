// What this process holds of the system's objects, to be compared before and after something that must leave none.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <ostream>
#include <vector>

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

// Not linked: their import library is no part of every tool chain.
template <class Function>
Function NtdllFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("ntdll.dll"), name)));
}

// Wine's GetGuiResources has no numbers; the table of GDI objects that every process maps has them there.
inline int CountGdiObjects() {
    if (const DWORD count = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS)) return static_cast<int>(count);
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint64_t user;
    };
    static_assert(sizeof(Entry) == 24);
    constexpr std::size_t kEntries = 16384;
    constexpr std::size_t kTableInPeb = 0xF8;
    // Process environment block and the like; the block's address is the second of six words.
    std::array<const std::byte*, 6> basic{};
    constexpr ULONG kBasicInformation = 0;
    const auto query =
        NtdllFunction<LONG(NTAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*)>("NtQueryInformationProcess");
    if (query(::GetCurrentProcess(), kBasicInformation, basic.data(), sizeof(basic), nullptr) < 0) return -1;
    const auto* table = *reinterpret_cast<const Entry* const*>(basic[1] + kTableInPeb);
    int count = 0;
    for (std::size_t i = 0; i < kEntries; ++i) count += table[i].type != 0 ? 1 : 0;
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

// -1: the system does not tell.
inline int CountHandles() {
    constexpr ULONG kExtendedHandleInformation = 64;
    struct Entry {
        void* object;
        ULONG_PTR processId;
        ULONG_PTR handle;
        ULONG access;
        USHORT backTrace;
        USHORT type;
        ULONG attributes;
        ULONG reserved;
    };
    static_assert(sizeof(Entry) == 40);
    constexpr std::size_t kHead = 16;  // the number of entries, and a reserved word
    constexpr auto kTooSmall = static_cast<LONG>(0xC0000004);
    const auto query = NtdllFunction<LONG(NTAPI*)(ULONG, void*, ULONG, ULONG*)>("NtQuerySystemInformation");
    std::vector<std::byte> buffer(std::size_t{1} << 16);
    LONG status = kTooSmall;
    while (status == kTooSmall && buffer.size() < (std::size_t{1} << 28)) {
        buffer.resize(buffer.size() * 2);
        status = query(kExtendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()), nullptr);
    }
    if (status < 0) return -1;
    const auto entries = *reinterpret_cast<const ULONG_PTR*>(buffer.data());
    const auto* entry = reinterpret_cast<const Entry*>(buffer.data() + kHead);
    int count = 0;
    for (ULONG_PTR i = 0; i < entries; ++i) count += entry[i].processId == ::GetCurrentProcessId() ? 1 : 0;
    return count;
}

inline ObjectCounts CountObjects() {
    return {.gdi = CountGdiObjects(), .windows = CountWindows(), .handles = CountHandles()};
}

// How often something is opened and closed to see whether it leaves anything: 100 times, or as often as the
// environment says.
inline int OpeningCount() {
    const char* wanted = std::getenv("BRENNVAR_TEST_OPENINGS");
    return wanted ? std::atoi(wanted) : 100;
}

// Fails when doing it often leaves more or fewer objects than there were. The first rounds fill what the system
// keeps for later.
inline void ExpectNothingLeftBy(const std::function<void()>& open) {
    for (int i = 0; i < 10; ++i) open();
    const ObjectCounts before = CountObjects();
    const int count = OpeningCount();
    for (int i = 0; i < count; ++i) open();
    EXPECT_EQ(CountObjects(), before) << "after " << count;
}

}  // namespace brennvar::test
