// An image of a skin, ready to be drawn over whatever is there: with its transparency, whole, in parts, as one
// frame of a strip of states, or stretched in nine pieces.
#pragma once

#include <memory>
#include <string>

#include "base/Windows_win.h"
#include "image/Bitmap.h"

namespace brennvar {

// Empty until it is given an image; drawing an empty one does nothing. Used on the user-interface thread only.
class CSkinImage {
public:
    CSkinImage();
    CSkinImage(CSkinImage&&) noexcept;
    CSkinImage& operator=(CSkinImage&&) noexcept;
    ~CSkinImage();

    // Empty when the file is missing, larger than 8 MB or no image that DecodeImage knows: a skin without the file
    // is a skin without the decoration.
    [[nodiscard]] static CSkinImage Load(const std::string& path);
    [[nodiscard]] static CSkinImage FromBitmap(const Bitmap& bitmap);

    // Gives up the pixels of all images of this thread, for as long as nobody looks. Those of a loaded one are made
    // again of its file, as that was when it was loaded, when it is next drawn.
    static void DropPixels();

    [[nodiscard]] explicit operator bool() const { return m_picture != nullptr; }
    // The size of one of so many frames side by side, which a control takes as its own; the given size when there
    // is no picture, or one that nobody could use: less than 8 pixels wide or high, or more than four times as
    // large.
    [[nodiscard]] SIZE FrameSizeOr(SIZE plainSize, int frameCount) const;
    [[nodiscard]] int Width() const;
    [[nodiscard]] int Height() const;

    void Draw(HDC target, int left, int top) const;
    // A part of the image, stretched where the sizes differ. What of it lies outside of the image is cut off
    // before. opacity: 0 is invisible, 255 as the image is.
    void DrawPart(HDC target, const RECT& to, const RECT& from, BYTE opacity = 255) const;
    // One frame, counted from 0, of a strip of frameCount frames side by side.
    void DrawFrame(HDC target, const RECT& to, int frame, int frameCount, BYTE opacity = 255) const;
    // Corners as they are, edges and middle stretched. borders: the widths of the four edges.
    void DrawNine(HDC target, const RECT& to, const RECT& borders) const;

private:
    struct Picture;
    explicit CSkinImage(std::unique_ptr<Picture> picture);

    std::unique_ptr<Picture> m_picture;
};

}  // namespace brennvar
