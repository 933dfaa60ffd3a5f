// Letter case of the ASCII letters, without regard to locale: paths are compared this way.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace brennvar {

[[nodiscard]] constexpr char AsciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

[[nodiscard]] inline std::string LowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), AsciiLower);
    return text;
}

[[nodiscard]] constexpr bool EqualsIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return AsciiLower(x) == AsciiLower(y); });
}

}  // namespace brennvar
