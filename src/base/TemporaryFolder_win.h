// Where files that are soon deleted belong.
#pragma once

#include <string>

namespace brennvar {

// The user's folder for temporary files, with a backslash at its end, in the code page of the system; the current
// folder, as an empty text, where Windows knows none. Does not look whether it is there.
[[nodiscard]] std::string TemporaryFolder();

}  // namespace brennvar
