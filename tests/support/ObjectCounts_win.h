// What a process holds of the system's objects, to be compared before and after something that must leave none.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <ostream>
#include <vector>

#include "base/Windows_win.h"

namespace brennvar::test {

struct ObjectCounts {
    int gdi = 0;
    int windows = 0;  // with their children
    int handles = 0;  // kernel objects
    friend bool operator==(const ObjectCounts&, const ObjectCounts&) = default;
    friend std::ostream& operator<<(std::ostream& out, const ObjectCounts& counts) {
        return out << "GDI " << counts.gdi << ", windows " << counts.windows << ", handles " << counts.handles;
    }
};

// A function of the system's lowest library, which is not linked: its import library is no part of every tool
// chain.
template <class Function>
Function SystemFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("ntdll.dll"), name)));
}

// Wine's GetGuiResources has no numbers; the table of GDI objects that every process maps has them there: entries
// of 24 bytes with the type at offset 14. The handle must allow to read the process's memory; -1: it does not.
inline int CountGdiObjects(HANDLE process) {
    if (const DWORD count = ::GetGuiResources(process, GR_GDIOBJECTS)) return static_cast<int>(count);
    constexpr std::size_t kEntries = 16384, kEntrySize = 24, kTypeOffset = 14, kTableInPeb = 0xF8;
    // The process environment block's address is the second of six words.
    std::array<const std::byte*, 6> basic{};
    constexpr ULONG kBasicInformation = 0;
    using Query = LONG(NTAPI*)(HANDLE, ULONG, void*, ULONG, ULONG*);
    const auto query = SystemFunction<Query>("NtQueryInformationProcess");
    if (query(process, kBasicInformation, basic.data(), sizeof(basic), nullptr) < 0) return -1;
    const std::byte* place = nullptr;
    std::vector<std::byte> table(kEntries * kEntrySize);
    if (!::ReadProcessMemory(process, basic[1] + kTableInPeb, &place, sizeof(place), nullptr) ||
        !::ReadProcessMemory(process, place, table.data(), table.size(), nullptr)) {
        return -1;
    }
    int count = 0;
    for (std::size_t i = 0; i < kEntries; ++i) count += table[i * kEntrySize + kTypeOffset] != std::byte{} ? 1 : 0;
    return count;
}

// Windows of a process with their children.
inline int CountWindows(DWORD processId) {
    struct Counter {
        DWORD processId;
        int count = 0;
    } counter{processId};
    // Below the desktop, at any depth.
    ::EnumChildWindows(
        ::GetDesktopWindow(),
        [](HWND window, LPARAM place) -> BOOL {
            auto& into = *reinterpret_cast<Counter*>(place);
            DWORD owner = 0;
            ::GetWindowThreadProcessId(window, &owner);
            into.count += owner == into.processId ? 1 : 0;
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&counter));
    return counter.count;
}

// Wine does not count them for a program that asks (GetProcessHandleCount), but lists those of all processes:
// behind two words, one entry of 40 bytes for each, with the process at offset 8.
inline int CountHandles(DWORD processId) {
    constexpr ULONG kExtendedHandleInformation = 64;
    constexpr LONG kTooShort = static_cast<LONG>(0xC0000004);
    constexpr std::size_t kHead = 16, kEntrySize = 40, kProcessOffset = 8;
    using Query = LONG(NTAPI*)(ULONG, void*, ULONG, ULONG*);
    const auto query = SystemFunction<Query>("NtQuerySystemInformation");
    std::vector<std::byte> list(1 << 16);
    LONG status = kTooShort;
    while ((status = query(kExtendedHandleInformation, list.data(), static_cast<ULONG>(list.size()), nullptr)) ==
           kTooShort) {
        list.resize(list.size() * 2);
    }
    if (status < 0) return -1;
    std::uint64_t entries = 0;
    std::memcpy(&entries, list.data(), sizeof(entries));
    int count = 0;
    for (std::uint64_t entry = 0; entry < entries; ++entry) {
        std::uint64_t owner = 0;
        std::memcpy(&owner, list.data() + kHead + entry * kEntrySize + kProcessOffset, sizeof(owner));
        count += owner == processId ? 1 : 0;
    }
    return count;
}

inline ObjectCounts CountObjects(HANDLE process = ::GetCurrentProcess(),
                                 DWORD processId = ::GetCurrentProcessId()) {
    return {
        .gdi = CountGdiObjects(process), .windows = CountWindows(processId), .handles = CountHandles(processId)};
}

// Fails when doing it often leaves more or fewer objects than there were. The first rounds fill what the system
// keeps for later.
inline void ExpectNothingLeftBy(const std::function<void()>& open) {
    for (int i = 0; i < 10; ++i) open();
    const ObjectCounts before = CountObjects();
    EXPECT_TRUE(before.gdi > 0 && before.windows > 0 && before.handles > 0) << before;
    for (int i = 0; i < 100; ++i) open();
    EXPECT_EQ(CountObjects(), before);
}

}  // namespace brennvar::test
