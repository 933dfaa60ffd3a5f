#include "tools/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

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

// The two letters of every twelve bits: attachments of many megabytes go through here.
constexpr std::array<std::array<char, 2>, 4096> kPairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i) pairs[i] = {kLetters[i >> 6], kLetters[i & 63]};
    return pairs;
}();

std::uint32_t ByteAt(std::string_view text, std::size_t place) {
    return place < text.size() ? static_cast<unsigned char>(text[place]) : 0;
}

}  // namespace

std::string EncodeBase64(std::string_view bytes) {
    std::string text((bytes.size() + 2) / 3 * 4, kPadding);
    char* to = text.data();
    std::size_t i = 0;
    for (; i + 3 <= bytes.size(); i += 3, to += 4) {
        const std::uint32_t group = ByteAt(bytes, i) << 16 | ByteAt(bytes, i + 1) << 8 | ByteAt(bytes, i + 2);
        std::memcpy(to, kPairs[group >> 12].data(), 2);
        std::memcpy(to + 2, kPairs[group & 0xFFF].data(), 2);
    }
    // One byte left makes two letters, two make three; the rest stays padding.
    const std::size_t left = bytes.size() - i;
    if (left > 0) {
        const std::uint32_t group = ByteAt(bytes, i) << 16 | ByteAt(bytes, i + 1) << 8;
        std::memcpy(to, kPairs[group >> 12].data(), 2);
        if (left == 2) to[2] = kLetters[group >> 6 & 63];
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
