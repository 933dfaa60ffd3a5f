// What settings.ini holds: the folder names of the active language and skin. Only the service writes it.
#pragma once

#include <string>

#include "config/IniSource.h"

namespace brennvar {

// Trimmed of white space; "English" and "Default" when there is no name.
[[nodiscard]] std::string ReadLanguageName(const IniSource& settings);
[[nodiscard]] std::string ReadSkinName(const IniSource& settings);

}  // namespace brennvar
