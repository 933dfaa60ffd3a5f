// Small drawings with smooth edges: lines and shapes are drawn four times as large and made smaller afterwards,
// over what is there already.
#pragma once

#include "ui/PixelSheet_win.h"

namespace brennvar {

class CSmoothDc {
public:
    // Pixels of the drawing to one of the target.
    static constexpr int kFactor = 4;

    // The place in the coordinates of the target; small, as each pixel of it costs sixteen.
    CSmoothDc(HDC target, const RECT& place);
    CSmoothDc(const CSmoothDc&) = delete;
    CSmoothDc& operator=(const CSmoothDc&) = delete;
    // Puts the drawing into the target.
    ~CSmoothDc();
    // Null without memory for the drawing. Its coordinates start at the place's corner, in quarters of a pixel.
    [[nodiscard]] HDC Dc() const { return m_large.Dc(); }

    // Shapes in quarters of a pixel.
    void FillDisc(const RECT& place, COLORREF colour) const;
    // Half discs at the left and right ends.
    void FillPill(const RECT& place, COLORREF colour) const;
    void DrawLines(const POINT* points, int count, int width, COLORREF colour) const;

private:
    void MakeSmaller();

    HDC m_target;
    RECT m_place;
    CPixelSheet m_small;
    CPixelSheet m_large;
};

}  // namespace brennvar
