// Texts of the program are single bytes in the code page of the language; files for other programs are UTF-8.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brennvar {

enum class CodePage : std::uint8_t { Western, CentralEuropean, Cyrillic };  // Windows' 1252, 1250, 1251

// By the name of a language's folder. A language whose code page is none of these counts as Western.
[[nodiscard]] CodePage CodePageOf(std::string_view languageName);

void AppendUtf8(std::string& utf8, std::string_view text, CodePage page);

}  // namespace brennvar
