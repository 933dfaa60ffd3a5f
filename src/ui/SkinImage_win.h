// An image of a skin, ready to be drawn over whatever is there: with its transparency, whole, in parts, as one
// frame of a strip of states, or stretched in nine pieces.
#pragma once

#include <memory>
#include <string>

#include "base/Handles_win.h"
#include "image/Bitmap.h"

namespace brennvar {

// Empty until it is given an image; drawing an empty one does nothing. Copies share the pixels. Used on the
// user-interface thread only.
class CSkinImage {
public:
    CSkinImage() = default;

    // Empty when the file is missing, larger than 8 MB or no image that DecodeImage knows: a skin without the file
    // is a skin without the decoration. The file is read when its picture is first drawn or asked for its size:
    // most lists never show a scroll bar. What one image holds, another one of the same path takes over.
    [[nodiscard]] static CSkinImage Load(const std::string& path);
    [[nodiscard]] static CSkinImage FromBitmap(const Bitmap& bitmap);

    [[nodiscard]] explicit operator bool() const { return static_cast<bool>(Get().bitmap); }
    // The size of one of so many frames side by side, which a control takes as its own; the given size when there
    // is no picture, or one that nobody could use: less than 8 pixels wide or high, or more than four times as
    // large.
    [[nodiscard]] SIZE FrameSizeOr(SIZE plainSize, int frameCount) const;
    [[nodiscard]] int Width() const { return Get().width; }
    [[nodiscard]] int Height() const { return Get().height; }

    void Draw(HDC target, int left, int top) const;
    // A part of the image, stretched where the sizes differ. What of it lies outside of the image is cut off
    // before. opacity: 0 is invisible, 255 as the image is.
    void DrawPart(HDC target, const RECT& to, const RECT& from, BYTE opacity = 255) const;
    // One frame, counted from 0, of a strip of frameCount frames side by side.
    void DrawFrame(HDC target, const RECT& to, int frame, int frameCount, BYTE opacity = 255) const;
    // Corners as they are, edges and middle stretched. borders: the widths of the four edges.
    void DrawNine(HDC target, const RECT& to, const RECT& borders) const;

private:
    struct Picture {
        std::string unread;  // the path; empty when nothing is left to read
        int width = 0;
        int height = 0;
        UniqueBitmap bitmap;  // none: there is no picture

        void Take(const Bitmap& pixels);
    };

    // Read by now.
    [[nodiscard]] const Picture& Get() const;

    std::shared_ptr<Picture> m_picture = nullptr;
};

}  // namespace brennvar
