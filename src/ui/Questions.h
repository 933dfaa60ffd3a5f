// Messages and questions under the program's name, which a dialog or page only has to word. User-interface thread.
#pragma once

#include <string>

#include "base/Windows_win.h"
#include "config/Language.h"
#include "ui/Fonts.h"

namespace brennvar {

// OK or Cancel; true for OK.
[[nodiscard]] bool AskToContinue(const CFonts& fonts, const Language& language, HWND owner, std::string question);
// Returns when the user has read it.
void ShowMessage(const CFonts& fonts, const Language& language, HWND owner, std::string text);

}  // namespace brennvar
