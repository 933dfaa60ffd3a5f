// Raw bytes written by hand: mostly zeros with a few pieces of text or escapes at given offsets.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

namespace brennvar::test {

using RawBytes = std::vector<std::byte>;

using Pieces = std::vector<std::pair<std::size_t, std::string_view>>;

// The pieces must lie inside; use the sv suffix for pieces that contain zeros.
inline RawBytes ZerosWith(std::size_t size, const Pieces& pieces) {
    RawBytes bytes(size);
    for (const auto& [offset, piece] : pieces) std::memcpy(&bytes.at(offset), piece.data(), piece.size());
    return bytes;
}

}  // namespace brennvar::test
