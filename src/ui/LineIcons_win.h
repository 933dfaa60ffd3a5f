// Small pictures of lines, in one colour and any size: strokes of one and a half pixels with smooth edges.
#pragma once

#include "base/Windows_win.h"

namespace brennvar {

// All in a square, with room around the strokes. Searching:
void DrawMagnifier(HDC dc, const RECT& place, COLORREF colour);
// An empty tray: nothing is here.
void DrawTray(HDC dc, const RECT& place, COLORREF colour);

}  // namespace brennvar
