// One record of "config.conf", the service's option file: a flat sequence of these, no header, no count, each
// enciphered on its own. The first record with an identifier wins.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"

namespace brennvar {

#pragma pack(push, 1)
struct OptionRecord {
    std::uint32_t id;     // 0
    std::uint32_t value;  // 4  number or flag
    char text[120];       // 8
};
#pragma pack(pop)
static_assert(RecordType<OptionRecord> && sizeof(OptionRecord) == 128);
static_assert(offsetof(OptionRecord, id) == 0 && offsetof(OptionRecord, value) == 4 &&
              offsetof(OptionRecord, text) == 8);

}  // namespace brennvar
