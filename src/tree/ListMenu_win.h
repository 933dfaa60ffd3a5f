// The menu of a list, with the shortcuts that every list has: Ctrl+C, Ctrl+A, F5.
#pragma once

#include "config/Language.h"
#include "ui/Look_win.h"
#include "ui/PopupMenu_win.h"

namespace brennvar {

enum class ListCommand : int { None, Copy, SelectAll, Refresh };
// Shows the menu at a point of the screen; what was chosen: one of these, or an item of the list's own, which come
// first. hasSelection: there is something to copy.
[[nodiscard]] int TrackListMenu(HWND owner, POINT point, const Look& look, const Language& language,
                                bool hasSelection, CPopupMenu menu = {});

}  // namespace brennvar
