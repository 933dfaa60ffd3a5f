// A window as the screen shows it, and how well things on it are told from their ground.
#pragma once

#include <cstddef>

#include "Desktop.h"

namespace brennvar::test {

class ScreenPicture {
public:
    explicit ScreenPicture(HWND window);
    // Of a place on the screen.
    explicit ScreenPicture(const RECT& place) : m_place(place), m_pixels(PixelsAt(place)) {}

    // Places are on the screen. False for one that is not wholly in the picture.
    [[nodiscard]] bool Shows(const RECT& place) const;
    // As 0xBBGGRR, of a pixel in the picture.
    [[nodiscard]] std::uint32_t At(LONG x, LONG y) const;
    // On the colour that there is most of in a place.
    struct Inks {
        double strongest = 1;  // its contrast; 1: there is no ink
        int strong = 0;        // pixels with the contrast of a frame or a mark
    };
    [[nodiscard]] Inks InksIn(const RECT& place) const;
    // Whether what has changed in the place since the other picture can be seen: at least half of a ring around it
    // has the contrast of a mark to what was there before. A caret or a hairline is less.
    [[nodiscard]] bool IsMarkedSince(const ScreenPicture& before, const RECT& place) const;
    friend bool operator==(const ScreenPicture& one, const ScreenPicture& other) {
        return one.m_pixels == other.m_pixels;
    }

private:
    RECT m_place{};
    Pixels m_pixels;
};

}  // namespace brennvar::test
