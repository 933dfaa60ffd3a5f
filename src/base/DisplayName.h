// How a program is named to the user: by the description in its version resource, else by its file name.
// All functions are pure; texts are in the ANSI code page.
#pragma once

#include <string>
#include <string_view>

namespace brennvar {

// The part after the last backslash; the whole path when that part is empty.
[[nodiscard]] std::string FileNameOf(std::string_view path);

// Texts of up to 40 characters as they are, longer ones cut to 40 of which the last three are dots.
[[nodiscard]] std::string CutTo40(std::string text);

// The description cut to 40 characters or, when it is empty, the file name in its full length.
[[nodiscard]] std::string DisplayNameOf(std::string_view path, std::string_view fileDescription);

// Without line breaks and other control characters. Descriptions, paths and names of hosts come from outside: a
// line break in them could pass for a line of ours, such as the advice.
[[nodiscard]] std::string OneLine(std::string text);
// The same, in place.
void BlankControls(std::string& text);

}  // namespace brennvar
