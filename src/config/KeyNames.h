// What menus call the keys that do the same: each language has its own words for them, the ones that are printed on
// its keyboards and stand in the menus of other programs.
#pragma once

#include <string>

#include "config/Language.h"

namespace brennvar {

enum class KeyStroke { ControlA, ControlC, ControlUp, ControlDown, Delete, Enter, F5 };

// "Ctrl+C", in German "Strg+C".
[[nodiscard]] std::string KeyName(KeyStroke stroke, const Language& language);
// The text of a menu item with the key that does the same, which menus show at the right.
[[nodiscard]] std::string WithKey(const std::string& caption, KeyStroke stroke, const Language& language);

}  // namespace brennvar
