// The programs whose activities are allowed without a question. The list belongs to the service.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "base/Bytes.h"

namespace brennvar {

#pragma pack(push, 1)
struct TrustedRecord {
    char longPath[260];  //   0  a path that the other field cannot hold; that one is empty then
    char shortPath[34];  // 260
};
#pragma pack(pop)
static_assert(RecordType<TrustedRecord> && sizeof(TrustedRecord) == 294);
static_assert(offsetof(TrustedRecord, longPath) == 0 && offsetof(TrustedRecord, shortPath) == 260);

// Whether the list holds the whole path, whatever the case of its letters. The file is only read: one that is
// missing or held by the service at this moment trusts nobody. Blocks for the disk.
[[nodiscard]] bool IsTrustedProgram(const std::string& trustedFile, std::string_view path);

}  // namespace brennvar
