// Icons of program files, as the shell shows them, and our own.
#pragma once

#include <string>

#include "base/Handles_win.h"

namespace brennvar {

enum class IconSize { Small, Large };  // 16 and 32 pixels at 96 per inch

// The program's own icon; nothing for programs that have none: a file that does not exist, a path that is empty.
// Paths on other machines are not asked for, because the answer may take minutes. Any thread that is ready for COM.
[[nodiscard]] UniqueIcon FindIconOfProgram(const std::string& path, IconSize size);
// Ours, which stands for a program that has none.
[[nodiscard]] UniqueIcon LoadNoIcon(IconSize size);

// One of our own icons (IDI_ numbers). Pixels of the screen.
[[nodiscard]] UniqueIcon LoadOwnIcon(int id, int width, int height);
// The product's shield as Windows shows icons of this size.
[[nodiscard]] UniqueIcon LoadShield(IconSize size);

}  // namespace brennvar
