// Bitmaps in memory whose pixels can be read and written: 32 bits each (0x00RRGGBB, with alpha where it is used),
// row by row from the top.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/Handles_win.h"

namespace brennvar {

// Empty without memory; pixels then stays as it was.
[[nodiscard]] UniqueBitmap MakePixelBitmap(int width, int height, std::uint32_t*& pixels);

// Such a bitmap with a DC to draw on it.
class CPixelSheet {
public:
    CPixelSheet(int width, int height);
    CPixelSheet(const CPixelSheet&) = delete;
    CPixelSheet& operator=(const CPixelSheet&) = delete;
    ~CPixelSheet();

    // Null without memory; there are no pixels then.
    [[nodiscard]] HDC Dc() const { return m_dc.Get(); }
    // What has been drawn is in the pixels after GdiFlush.
    [[nodiscard]] std::uint32_t& At(int x, int y) const {
        return m_pixels[static_cast<std::ptrdiff_t>(y) * m_width + x];
    }

private:
    const int m_width;
    std::uint32_t* m_pixels = nullptr;
    UniqueBitmap m_bitmap;
    UniqueMemoryDc m_dc;
    HGDIOBJ m_oldBitmap = nullptr;
};

}  // namespace brennvar
