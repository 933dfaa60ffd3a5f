// The menu of a list, with the shortcuts that every list has: Ctrl+C, Ctrl+A, F5.
#pragma once

#include <cstdint>

#include "config/Language.h"
#include "ui/Look.h"

namespace brennvar {

enum class ListCommand : std::uint8_t { None, Copy, SelectAll, Refresh };
// Shows the menu at a point of the screen; what was chosen. hasSelection: there is something to copy.
[[nodiscard]] ListCommand TrackListMenu(HWND owner, POINT point, const Look& look, const Language& language,
                                        bool hasSelection);

}  // namespace brennvar
