// The menu of the notification icon in the skin. User-interface thread only.
#pragma once

#include "commands/ProtectionMode.h"
#include "config/Language.h"
#include "tray/TrayMenu.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {

// Shows it at a point of the screen until it is closed; what was chosen is posted to the owner as a command.
void ShowTrayMenu(HWND owner, POINT point, const Language& language, const TrayMenuState& state, const Look& look);

// The part of it that changes the mode, below a place of the screen, or above it where there is no room.
void ShowModeMenu(HWND owner, const RECT& place, const Language& language, ProtectionMode mode, const Look& look);

}  // namespace brennvar
