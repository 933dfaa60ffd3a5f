// The version resource of a program file (VS_VERSIONINFO). The file belongs to the program that the user is asked
// about, so nothing in it is trusted: every length is checked against the node that holds it.
//
// A node is: u16 size of the whole node, u16 size of its value, u16 kind of value (0 binary, 1 text), a
// zero-terminated UTF-16 key, the value, then child nodes up to the node's end. Value and children start at
// multiples of 4 bytes from the start of the block.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace brennvar {

// The text of that name ("CompanyName") in the table of the first language and code-page pair under
// VarFileInfo\Translation. Empty when the block has none or is damaged on the way to it.
[[nodiscard]] std::u16string FindVersionText(std::span<const std::byte> block, std::u16string_view key);
[[nodiscard]] inline std::u16string FindFileDescription(std::span<const std::byte> block) {
    return FindVersionText(block, u"FileDescription");
}

}  // namespace brennvar
