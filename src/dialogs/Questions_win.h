// Messages and questions under the program's name, which a dialog or page only has to word. User-interface thread.
#pragma once

#include <string>

#include "base/Windows_win.h"
#include "config/Language.h"
#include "ui/Fonts_win.h"

namespace brennvar {

enum class DefaultAnswer { Ok, Cancel };
// OK or Cancel; true for OK. The default is what Enter answers: Cancel for what cannot be undone.
[[nodiscard]] bool AskToContinue(const CFonts& fonts, const Language& language, HWND owner, std::string question,
                                 DefaultAnswer byEnter);
// Returns when the user has read it.
void ShowMessage(const CFonts& fonts, const Language& language, HWND owner, std::string text);

}  // namespace brennvar
