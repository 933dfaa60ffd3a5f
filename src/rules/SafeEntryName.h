// The names of an archive's entries are somebody else's text. What they become here can never leave the folder that
// the entries are unpacked into.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brennvar {

// What is left of a stored name when everything has been dropped that could lead out of a folder: a drive, a
// leading separator, a leading "..\", and whatever stands before an inner "\..\". Nothing for an entry that is to
// be skipped: nothing is left, or what is left climbs at its end, has a colon (a drive, a stream of a file), or
// names a device of Windows (NUL, COM1.txt) in any of its parts.
[[nodiscard]] std::optional<std::string> SafeEntryName(std::string_view stored);

// The same as the path of a file below a folder, as Windows would understand it: parts with '/' between them,
// without empty ones and ".", each without the dots and blanks at its end, which Windows drops. Two entries with
// equal paths are one file. Nothing for what SafeEntryName skips, for the name of a folder (it ends in a
// separator), for one that Windows cannot give to a file, and for one that has the form of a short name ("RULES~1")
// and may be another file's.
[[nodiscard]] std::optional<std::string> EntryPath(std::string_view stored);

}  // namespace brennvar
