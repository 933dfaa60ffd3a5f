// Version resources of arbitrary programs.
#include <cstdint>
#include <cstdlib>

#include "base/VersionBlock.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::u16string text = brennvar::FindFileDescription(std::as_bytes(std::span(data, size)));
    if (text.size() * 2 > size) std::abort();
    return 0;
}
