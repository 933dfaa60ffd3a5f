// How a program is named to the user: by the description in its version resource, else by its file name.
// All functions are pure; texts are in the ANSI code page unless their type says otherwise.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace brennvar {

// The part after the last backslash; the whole path when that part is empty.
[[nodiscard]] std::string FileNameOf(std::string_view path);

// Texts of up to 40 characters as they are, longer ones cut to 40 of which the last three are dots.
[[nodiscard]] std::string CutTo40(std::string text);

// The description as ShownText has it, cut to 40 characters, or, when nothing of it is left, the file name in its
// full length.
[[nodiscard]] std::string DisplayNameOf(std::string_view path, std::string_view fileDescription);

// Without line breaks and other control characters. Descriptions, paths and names of hosts come from outside: a
// line break in them could pass for a line of ours, such as the advice.
[[nodiscard]] std::string OneLine(std::string text);
// The same, in place.
void BlankControls(std::string& text);

// As a question shows what comes from outside: on one line, without blanks at its ends, several of them as one, so
// that nothing is pushed out of sight, and with marks of the writing direction as NameDirections has them.
[[nodiscard]] std::string ShownText(std::string_view text);

// The display name as a question shows it, and `unknown` where nothing of it can be seen.
[[nodiscard]] std::string ShownNameOf(std::string_view path, std::string_view fileDescription,
                                      const std::string& unknown);

// Marks that turn the order of the letters around them ("gpj.exe" reads as "exe.jpg" behind one), by their names:
// "[RLO]". Of texts that the system has in UTF-16, and of bytes where its code page is UTF-8.
[[nodiscard]] std::u16string NameDirections(std::u16string_view text);
[[nodiscard]] std::string NameDirections(std::string_view text);

// Whether so much of a text fits into its place.
using Fits = std::function<bool(const std::string& text)>;
// The text, or dots and as much of its end as fits: what decides about the name of a host stands there.
[[nodiscard]] std::string EndThatFits(const std::string& text, const Fits& fits);

}  // namespace brennvar
