// How many GDI objects there are. Wine does not count them for a program that asks (GetGuiResources), but its table
// stands where Windows has it, with the same layout: PEB + 0xF8, entries of 24 bytes, the type at offset 14. On
// Windows it holds the objects of all processes, so a test compares two counts and allows for others' changes.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Windows_win.h"
// windows.h must stand before winternl.h.
#include <winternl.h>

namespace brennvar::test {

inline int CountGdiObjects() {
    constexpr std::size_t kEntries = 16384, kEntrySize = 24, kTypeOffset = 14;
    PROCESS_BASIC_INFORMATION process{};
    ::NtQueryInformationProcess(::GetCurrentProcess(), ProcessBasicInformation, &process, sizeof(process), nullptr);
    const auto* peb = reinterpret_cast<const std::uint8_t*>(process.PebBaseAddress);
    const auto* table = *reinterpret_cast<const std::uint8_t* const*>(peb + 0xF8);
    int count = 0;
    for (std::size_t i = 0; i < kEntries; ++i) {
        if (table[i * kEntrySize + kTypeOffset] != 0) ++count;
    }
    return count;
}

}  // namespace brennvar::test
