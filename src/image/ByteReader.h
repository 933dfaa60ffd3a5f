// Reads a file from front to back and remembers when it asked for more than there is. Little-endian, as GIF and
// ICO.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace brennvar {

class ByteReader {
public:
    explicit ByteReader(std::span<const std::byte> bytes) : m_rest(bytes) {}

    // Zeros and an empty span once the end was passed: callers check IsGood() before they use what they read.
    [[nodiscard]] std::uint8_t U8() {
        const auto bytes = Take(1);
        return bytes.empty() ? std::uint8_t{0} : std::to_integer<std::uint8_t>(bytes[0]);
    }
    [[nodiscard]] std::uint16_t U16() {
        const std::uint32_t low = U8();
        return static_cast<std::uint16_t>(low | static_cast<std::uint32_t>(U8()) << 8);
    }
    [[nodiscard]] std::uint32_t U32() {
        const std::uint32_t low = U16();
        return low | static_cast<std::uint32_t>(U16()) << 16;
    }
    // Exactly size bytes, or none.
    [[nodiscard]] std::span<const std::byte> Take(std::size_t size) {
        if (size > m_rest.size()) {
            m_rest = {};
            m_isGood = false;
            return {};
        }
        const auto taken = m_rest.first(size);
        m_rest = m_rest.subspan(size);
        return taken;
    }
    void Skip(std::size_t size) { (void)Take(size); }  // the reader remembers a failure

    [[nodiscard]] bool IsGood() const { return m_isGood; }

private:
    std::span<const std::byte> m_rest;
    bool m_isGood = true;
};

}  // namespace brennvar
