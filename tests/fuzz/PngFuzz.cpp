// PNG with its checksums mended, so that changed chunks get past them.
#include <zlib.h>

#include "FuzzImage.h"
#include "image/Decoders.h"

namespace {

void MendChecksums(std::vector<std::uint8_t>& file) {
    constexpr std::size_t kSignatureSize = 8, kLengthSize = 4, kNameSize = 4, kCrcSize = 4;
    const auto number = [&file](std::size_t at) {
        return static_cast<std::uint32_t>(file[at]) << 24 | static_cast<std::uint32_t>(file[at + 1]) << 16 |
               static_cast<std::uint32_t>(file[at + 2]) << 8 | file[at + 3];
    };
    std::size_t at = kSignatureSize;
    while (at + kLengthSize + kNameSize + kCrcSize <= file.size()) {
        const std::size_t size = number(at);
        if (size > file.size() - at - kLengthSize - kNameSize - kCrcSize) return;
        const std::size_t end = at + kLengthSize + kNameSize + size;
        const uLong crc = crc32(0, &file[at + kLengthSize], static_cast<uInt>(kNameSize + size));
        for (std::size_t i = 0; i < kCrcSize; ++i) file[end + i] = static_cast<std::uint8_t>(crc >> (24 - 8 * i));
        at = end + kCrcSize;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace brennvar;
    std::vector<std::uint8_t> file(data, data + size);
    MendChecksums(file);
    fuzz::RequireProperImage(DecodePng(fuzz::BytesOfInput(file.data(), file.size())));
    return 0;
}
