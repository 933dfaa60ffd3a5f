// Files written out by hand in hexadecimal digits.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brennvar::test {

// Two digits a byte; blanks are for the reader. In memory of exactly its size, so that the sanitizer sees every
// step over the end.
inline std::vector<std::byte> FromHex(std::string_view text) {
    std::vector<std::byte> bytes;
    unsigned digits = 1;  // a leading one, so that two digits make a number of nine bits
    for (const char c : text) {
        if (c == ' ') continue;
        digits = digits << 4 | static_cast<unsigned>(c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10);
        if (digits < 0x100) continue;
        bytes.push_back(static_cast<std::byte>(digits & 0xFF));
        digits = 1;
    }
    bytes.shrink_to_fit();
    return bytes;
}
inline std::string TextFromHex(std::string_view text) {
    const auto bytes = FromHex(text);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

}  // namespace brennvar::test
