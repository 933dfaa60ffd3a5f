// Keeps windows on the visible part of a screen, clear of the task bar.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

// The rectangle moved, and made smaller if it must be, so that it lies inside the area.
[[nodiscard]] RECT FitInto(RECT rectangle, const RECT& area);
// What is left of an area beside the task bar: the larger part. All of it when the bar lies elsewhere, or over all.
[[nodiscard]] RECT BesideBar(const RECT& area, const RECT& bar);
// The work area of the screen nearest to a rectangle, in screen coordinates.
[[nodiscard]] RECT WorkAreaNear(const RECT& rectangle);
// The work area of the main screen.
[[nodiscard]] RECT MainWorkArea();
// After the screens have changed: dialogs of this thread of which a part, or all, lies outside of their work areas
// come back, hidden and minimised ones included.
void BringOntoScreens();
// A rectangle of this size in the middle of an area, inside it even when it is too large.
[[nodiscard]] RECT CenterIn(const RECT& area, SIZE size);

}  // namespace brennvar
