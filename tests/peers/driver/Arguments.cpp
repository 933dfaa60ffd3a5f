#include "Arguments.h"

#include <charconv>
#include <cstddef>

namespace brennvar::peers {
namespace {

std::string Decode(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned char byte = 0;
        const std::string_view digits = text.substr(at + 1, 2);
        const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (text[at] == '%' && digits.size() == 2 && read.ptr == digits.data() + 2) {
            bytes += static_cast<char>(byte);
            at += 2;
        } else {
            bytes += text[at];
        }
    }
    return bytes;
}

}  // namespace

Arguments::Arguments(int count, char** words) {
    for (int index = 0; index < count; ++index) {
        const std::string_view word = words[index];
        const std::size_t mark = word.find('=');
        m_given.emplace_back(word.substr(0, mark),
                             mark == std::string_view::npos ? std::string() : Decode(word.substr(mark + 1)));
    }
}

std::vector<std::string> Arguments::All(std::string_view key) const {
    std::vector<std::string> values;
    for (const auto& [name, value] : m_given) {
        if (name == key) values.push_back(value);
    }
    return values;
}

std::string Arguments::Text(std::string_view key, std::string fallback) const {
    const std::vector<std::string> values = All(key);
    return values.empty() ? fallback : values.front();
}

std::uint32_t Arguments::Number(std::string_view key, std::uint32_t fallback) const {
    if (!Has(key)) return fallback;
    const std::string text = Text(key);
    std::uint32_t value = 0;
    (void)std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

std::string Printable(std::string_view bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte > 31 && byte < 127 && character != '%') {
            text += character;
        } else {
            text += {'%', kDigits[byte >> 4U], kDigits[byte & 15U]};
        }
    }
    return text;
}

}  // namespace brennvar::peers
