// Strips of states: one image that holds the looks of a control side by side.
#pragma once

namespace brennvar {

struct ImageRect {
    int left = 0, top = 0, width = 0, height = 0;
    bool operator==(const ImageRect&) const = default;
};

// Frame (from 0) of a strip of frameCount. All are imageWidth / frameCount wide; columns that remain belong to
// none. Empty for a frame that the strip does not have.
[[nodiscard]] constexpr ImageRect FrameRect(int imageWidth, int imageHeight, int frame, int frameCount) {
    if (frame < 0 || frame >= frameCount || imageWidth < frameCount || imageHeight <= 0) return {};
    const int width = imageWidth / frameCount;
    return {frame * width, 0, width, imageHeight};
}

}  // namespace brennvar
