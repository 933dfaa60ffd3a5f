// The menu of the notification icon in the skin. User-interface thread only.
#pragma once

#include "commands/ProtectionMode.h"
#include "config/Language.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {

[[nodiscard]] CPopupMenu MakeTrayMenu(const Language& language, ProtectionMode mode);

// Shows it at a point of the screen until it is closed; what was chosen is posted to the owner as a command.
void ShowTrayMenu(HWND owner, POINT point, const Language& language, ProtectionMode mode, const Look& look);

}  // namespace brennvar
