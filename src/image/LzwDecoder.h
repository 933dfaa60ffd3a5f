// The compression of GIF: LZW with codes of 3 to 12 bits, packed from the lowest bit of each byte upward.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace brennvar {

class LzwDecoder {
public:
    static constexpr int kFewestSymbolBits = 2;  // for two colours as well
    static constexpr int kMostSymbolBits = 8;

    // symbolBits: 2 to 8. Symbols are written to to, which must outlive the decoder.
    LzwDecoder(int symbolBits, std::span<std::uint8_t> to);

    // Decodes a piece of the stream; pieces may end anywhere. False for a code that the stream cannot have yet.
    // What follows the last symbol or the end code is ignored.
    [[nodiscard]] bool Decode(std::span<const std::byte> piece);
    [[nodiscard]] bool IsFull() const { return m_written == m_to.size(); }

private:
    static constexpr unsigned kMostCodes = 4096;

    void Clear();
    [[nodiscard]] bool TakeCode(unsigned code);
    void WriteString(unsigned code);
    void AddCode(std::uint8_t lastSymbol);

    const unsigned m_symbolBits;
    const unsigned m_clearCode;
    std::span<std::uint8_t> m_to;
    std::size_t m_written = 0;
    bool m_isEnded = false;

    unsigned m_bits = 0;  // read, but not yet taken as codes; at most 11 + 8
    unsigned m_bitCount = 0;
    unsigned m_codeBits = 0;
    unsigned m_codeCount = 0;  // the next code to be added
    unsigned m_previous = 0;   // kMostCodes after a clear code

    // A code stands for the string of m_prefix[code] and m_last[code] after it.
    std::array<std::uint16_t, kMostCodes> m_prefix{};
    std::array<std::uint8_t, kMostCodes> m_last{};
    std::array<std::uint8_t, kMostCodes> m_first{};
    std::array<std::uint16_t, kMostCodes> m_length{};
};

}  // namespace brennvar
