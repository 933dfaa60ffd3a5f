// A window and everything in it as one picture. Windows has each window paint itself, one after the other, and the
// screen may be looked at after any of them: half of what was there stands between parts of what comes. Here they
// all paint into one bitmap, which is then copied at one stroke. A dialog that keeps its picture (PictureToKeep)
// has only what has changed painted into that.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

// Paints a part of the window's client area (in its coordinates), with all visible windows in it, and shows it.
// Nothing of it is left to be painted afterwards. How each window is asked is told in WindowPainter_win.h.
// Without memory for the bitmap everything is painted in Windows' own way. A window that is not on the screen shows
// nothing and stays as it is.
void ShowAsOnePicture(HWND window, const RECT& part);

// For the WM_PAINT of a window of which so much has to be painted anew that everything in it comes with it: true
// when it was all of the window, and has been shown. False: nothing was done, for example without memory for the
// bitmap, and Windows has each window paint itself.
[[nodiscard]] bool PaintAsOnePicture(HWND window);

}  // namespace brennvar
