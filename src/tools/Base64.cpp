#include "tools/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace brennvar {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr char kPadding = '=';
constexpr std::uint8_t kNoDigit = 0xFF;

// The six bits of every byte that is a letter of the alphabet.
constexpr std::array<std::uint8_t, 256> kDigits = [] {
    std::array<std::uint8_t, 256> digits{};
    digits.fill(kNoDigit);
    for (std::size_t i = 0; i < kLetters.size(); ++i) {
        digits[static_cast<unsigned char>(kLetters[i])] = static_cast<std::uint8_t>(i);
    }
    return digits;
}();

std::uint32_t ByteAt(std::string_view text, std::size_t place) {
    return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
}

}  // namespace

std::string EncodeBase64(std::string_view bytes) {
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::uint32_t group = ByteAt(bytes, i) << 16 | ByteAt(bytes, i + 1) << 8 | ByteAt(bytes, i + 2);
        text += kLetters[group >> 18];
        text += kLetters[group >> 12 & 63];
        text += i + 1 < bytes.size() ? kLetters[group >> 6 & 63] : kPadding;
        text += i + 2 < bytes.size() ? kLetters[group & 63] : kPadding;
    }
    return text;
}

std::optional<std::string> DecodeBase64(std::string_view text) {
    if (text.size() % 4 != 0) return std::nullopt;
    std::size_t padding = 0;
    while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == kPadding) ++padding;
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    for (std::size_t i = 0; i < text.size(); i += 4) {
        const std::size_t given = i + 4 == text.size() ? 4 - padding : 4;  // letters of this group
        std::uint32_t group = 0;
        for (std::size_t j = 0; j < given; ++j) {
            const std::uint8_t digit = kDigits[static_cast<unsigned char>(text[i + j])];
            if (digit == kNoDigit) return std::nullopt;
            group |= static_cast<std::uint32_t>(digit) << (18 - 6 * j);
        }
        for (std::size_t j = 0; j + 1 < given; ++j) bytes += static_cast<char>(group >> (16 - 8 * j) & 0xFF);
    }
    return bytes;
}

}  // namespace brennvar
