// Opens the language and the skin that settings.ini names, as they are at the time of the call.
#pragma once

#include <string>

#include "config/Language.h"
#include "config/ResourceChoice.h"
#include "config/Skin.h"

namespace brennvar {

[[nodiscard]] std::string CurrentLanguageName();
[[nodiscard]] ResourceChoice CurrentResourceChoice();
[[nodiscard]] Language OpenLanguage();
[[nodiscard]] Skin OpenSkin();

}  // namespace brennvar
