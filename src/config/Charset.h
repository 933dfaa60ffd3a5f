// The character set of fonts, by language.
#pragma once

#include <cstdint>
#include <string_view>

namespace brennvar {

// The number that fonts are created with (lfCharSet), for the name of a language folder. The name is compared
// exactly, case included; an unknown one has the ANSI character set, 0.
[[nodiscard]] std::uint8_t GetFontCharset(std::string_view languageName);

}  // namespace brennvar
