// Overwrites what must not stay in memory.
#pragma once

#include <cstddef>

#include "base/Bytes.h"

namespace brennvar {

// Writes zeros over the bytes, and is not left out by a compiler that sees them unused afterwards.
inline void WipeMemory(void* bytes, std::size_t size) {
    volatile auto* at = static_cast<volatile unsigned char*>(bytes);
    for (std::size_t i = 0; i < size; ++i) at[i] = 0;
}

template <RecordType Record>
void WipeRecord(Record& record) {
    WipeMemory(&record, sizeof record);
}

}  // namespace brennvar
