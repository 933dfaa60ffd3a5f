// The icon of a program file, as the shell shows it.
#pragma once

#include <string>

#include "base/Handles_win.h"

namespace brennvar {

enum class IconSize { Small, Large };  // 16 and 32 pixels at 96 per inch

// The program's own icon, or ours for programs that have none: a file that does not exist, a path that is empty.
// Paths on other machines are not asked for, because the answer may take minutes.
[[nodiscard]] UniqueIcon LoadIconOfProgram(const std::string& path, IconSize size);

}  // namespace brennvar
