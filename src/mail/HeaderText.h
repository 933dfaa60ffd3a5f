// Text that stands in the headers of a message: nothing in it can begin another header, and what is not ASCII is
// written as encoded words (RFC 2047) in the code page of the language.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "config/CodePage.h"

namespace brennvar {

// What mail calls the code page: "windows-1252".
[[nodiscard]] const char* CharsetName(CodePage page);

// Line ends, zeros and all other control characters become blanks.
[[nodiscard]] std::string CleanText(std::string_view text);
[[nodiscard]] bool IsAscii(std::string_view text);

// As it stands when it is ASCII that nobody could take for an encoded word, and of no unlawful length; else encoded
// words of at most 75 characters, a line each. used: characters that stand before it on its line.
[[nodiscard]] std::string EncodeHeaderText(std::string_view text, CodePage page, std::size_t used);

// Of "From: ", the longest that stands before a name on its line.
inline constexpr std::size_t kBeforeName = 6;

// The name of a person before an address: in double quotes, with those within it and backslashes escaped; one that
// is not ASCII is encoded words, which cannot stand in quotes (RFC 2047, 5 (3)). There is room for
// kBeforeName characters before it.
[[nodiscard]] std::string EncodeDisplayName(std::string_view name, CodePage page);

// The name of a file in double quotes; what has a meaning there or in a path becomes "_". Encoded words stand in
// the quotes, as mail programs read and write them.
[[nodiscard]] std::string EncodeFileName(std::string_view name, CodePage page);

}  // namespace brennvar
