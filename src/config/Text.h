// One text that the user sees: its number in the language files and its English wording.
#pragma once

#include <string_view>

namespace brennvar {

// A text is always written as Text{45, "Statistics"}, with the type's name, a number and literals: a test reads
// these from the sources and holds them against the language files. A bare pair in braces, which it could not tell
// from any other, does not compile.
struct Text {
    int number = 0;            // 0: no text
    std::string_view english;  // of a literal

    constexpr Text() = default;
    constexpr explicit Text(int textNumber, std::string_view englishText)
        : number(textNumber), english(englishText) {}
};

}  // namespace brennvar
