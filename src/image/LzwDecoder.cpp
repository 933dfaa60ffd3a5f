#include "image/LzwDecoder.h"

namespace brennvar {

LzwDecoder::LzwDecoder(int symbolBits, std::span<std::uint8_t> to)
    : m_symbolBits(static_cast<unsigned>(symbolBits)), m_clearCode(1U << m_symbolBits), m_to(to) {
    for (unsigned symbol = 0; symbol < m_clearCode; ++symbol) {
        m_first[symbol] = m_last[symbol] = static_cast<std::uint8_t>(symbol);
        m_length[symbol] = 1;
    }
    Clear();
}

void LzwDecoder::Clear() {
    m_codeBits = m_symbolBits + 1;
    m_codeCount = m_clearCode + 2;  // the clear code and the end code
    m_previous = kMostCodes;
}

bool LzwDecoder::Decode(std::span<const std::byte> piece) {
    for (const std::byte next : piece) {
        if (m_isEnded || IsFull()) return true;
        m_bits |= std::to_integer<unsigned>(next) << m_bitCount;
        m_bitCount += 8;
        while (m_bitCount >= m_codeBits && !m_isEnded && !IsFull()) {
            const unsigned code = m_bits & ((1U << m_codeBits) - 1);
            m_bits >>= m_codeBits;
            m_bitCount -= m_codeBits;
            if (!TakeCode(code)) return false;
        }
    }
    return true;
}

bool LzwDecoder::TakeCode(unsigned code) {
    if (code == m_clearCode) {
        Clear();
        return true;
    }
    if (code == m_clearCode + 1) {
        m_isEnded = true;
        return true;
    }
    if (m_previous == kMostCodes) {  // after a clear code only symbols are known
        if (code > m_clearCode) return false;
        WriteString(code);
    } else if (code < m_codeCount) {
        AddCode(m_first[code]);
        WriteString(code);
    } else {
        // The code that is being added: the previous string and its own first symbol. A full table adds none.
        if (code > m_codeCount || m_codeCount == kMostCodes) return false;
        AddCode(m_first[m_previous]);
        WriteString(code);
    }
    m_previous = code;
    return true;
}

// From its last symbol to its first, as the table is linked; what does not fit is cut.
void LzwDecoder::WriteString(unsigned code) {
    std::size_t at = m_written + m_length[code];
    const std::size_t end = at < m_to.size() ? at : m_to.size();
    while (true) {
        --at;
        if (at < end) m_to[at] = m_last[code];
        if (at == m_written) break;
        code = m_prefix[code];
    }
    m_written = end;
}

void LzwDecoder::AddCode(std::uint8_t lastSymbol) {
    if (m_codeCount == kMostCodes) return;  // the table is full until the next clear code
    m_prefix[m_codeCount] = static_cast<std::uint16_t>(m_previous);
    m_last[m_codeCount] = lastSymbol;
    m_first[m_codeCount] = m_first[m_previous];
    m_length[m_codeCount] = static_cast<std::uint16_t>(m_length[m_previous] + 1);
    ++m_codeCount;
    if (m_codeCount == 1U << m_codeBits && m_codeBits < 12) ++m_codeBits;
}

}  // namespace brennvar
