// An image of a skin, ready to be drawn over whatever is there: with its transparency, whole, in parts, as one
// frame of a strip of states, or stretched in nine pieces.
#pragma once

#include <string>

#include "base/Handles_win.h"
#include "image/Bitmap.h"

namespace brennvar {

// Empty until it is given an image; drawing an empty one does nothing. Used on the user-interface thread only.
class CSkinImage {
public:
    CSkinImage() = default;
    CSkinImage(CSkinImage&&) noexcept = default;
    CSkinImage& operator=(CSkinImage&&) noexcept = default;

    // Empty when the file is missing, larger than 8 MB or no image that DecodeImage knows: a skin without the file
    // is a skin without the decoration.
    [[nodiscard]] static CSkinImage Load(const std::string& path);
    [[nodiscard]] static CSkinImage FromBitmap(const Bitmap& bitmap);

    [[nodiscard]] explicit operator bool() const { return static_cast<bool>(m_bitmap); }
    // The size of one of so many frames side by side, which a control takes as its own; the given size when there
    // is no picture, or one that nobody could use: less than 8 pixels wide or high, or more than four times as
    // large.
    [[nodiscard]] SIZE FrameSizeOr(SIZE plainSize, int frameCount) const;
    [[nodiscard]] int Width() const { return m_width; }
    [[nodiscard]] int Height() const { return m_height; }

    void Draw(HDC target, int left, int top) const;
    // A part of the image, stretched where the sizes differ. What of it lies outside of the image is cut off
    // before. opacity: 0 is invisible, 255 as the image is.
    void DrawPart(HDC target, const RECT& to, const RECT& from, BYTE opacity = 255) const;
    // One frame, counted from 0, of a strip of frameCount frames side by side.
    void DrawFrame(HDC target, const RECT& to, int frame, int frameCount, BYTE opacity = 255) const;
    // Corners as they are, edges and middle stretched. borders: the widths of the four edges.
    void DrawNine(HDC target, const RECT& to, const RECT& borders) const;

private:
    int m_width = 0;
    int m_height = 0;
    UniqueBitmap m_bitmap;
};

}  // namespace brennvar
