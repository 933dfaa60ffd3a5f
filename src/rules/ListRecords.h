// The records of the service's lists: programs whose activities are allowed ("trusted.conf") and sites that
// browsers are kept from ("domain.conf"). Each file is a flat sequence of them, no header, each enciphered on its
// own. Numbers are little-endian; texts end in a zero.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Bytes.h"

namespace brennvar {

#pragma pack(push, 1)
struct TrustedRecord {
    char longPath[260];  //   0  a path that the other field cannot hold; that one is empty then
    char shortPath[34];  // 260
};

struct SiteRecord {
    std::uint32_t id;  // 0  given by the service
    char name[104];    // 4
};
#pragma pack(pop)
static_assert(RecordType<TrustedRecord> && sizeof(TrustedRecord) == 294);
static_assert(offsetof(TrustedRecord, longPath) == 0 && offsetof(TrustedRecord, shortPath) == 260);
static_assert(RecordType<SiteRecord> && sizeof(SiteRecord) == 108);
static_assert(offsetof(SiteRecord, id) == 0 && offsetof(SiteRecord, name) == 4);

}  // namespace brennvar
