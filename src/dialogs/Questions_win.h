// Messages and questions under the program's name, which a dialog or page only has to word. User-interface thread.
#pragma once

#include <string>

#include "base/Windows_win.h"
#include "config/Language.h"
#include "dialogs/MessageDialog_win.h"
#include "ui/Fonts_win.h"

namespace brennvar {

enum class DefaultAnswer { Ok, Cancel };
// The verb, or Cancel; true for the verb. The default is what Enter answers: Cancel for what cannot be undone,
// which is a warning then.
[[nodiscard]] bool AskToContinue(const CFonts& fonts, const Language& language, HWND owner, std::string question,
                                 std::string verb, DefaultAnswer byEnter);
// Returns when the user has read it.
void ShowMessage(const CFonts& fonts, const Language& language, HWND owner, std::string text,
                 MessageSign sign = MessageSign::Information);

}  // namespace brennvar
