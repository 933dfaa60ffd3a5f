// A window and everything in it, painted into a bitmap: each of them is asked by WM_ERASEBKGND and WM_PRINTCLIENT,
// without PRF_ERASEBKGND, since what lies behind it has been painted already; one with a frame by WM_PRINT with
// PRF_NONCLIENT.
#pragma once

#include "base/Windows_win.h"
#include "ui/WindowTree_win.h"

namespace brennvar {

// The DC has the coordinates of the outermost window's client area. Only the part is painted, and of that only what
// the DC's clipping lets through: windows of which it shows nothing are not asked.
void PaintWindows(const WindowTree& tree, HDC dc, const RECT& part);

}  // namespace brennvar
