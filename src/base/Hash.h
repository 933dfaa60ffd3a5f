// A hash of bytes that come one after the other: FNV-1a of 64 bits, with its offset basis and prime.
#pragma once

#include <cstdint>

namespace brennvar {

class ByteHash {
public:
    void Add(std::uint8_t byte) { m_value = (m_value ^ byte) * 0x100000001B3U; }
    [[nodiscard]] std::uint64_t Value() const { return m_value; }

private:
    std::uint64_t m_value = 0xCBF29CE484222325U;
};

}  // namespace brennvar
