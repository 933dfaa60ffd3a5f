#include "ui/PixelSheet_win.h"

namespace brennvar {

UniqueBitmap MakePixelBitmap(int width, int height, std::uint32_t*& pixels) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // the top row first
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void* bits = nullptr;
    UniqueBitmap bitmap(::CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (bitmap) pixels = static_cast<std::uint32_t*>(bits);
    return bitmap;
}

CPixelSheet::CPixelSheet(int width, int height)
    : m_width(width), m_bitmap(MakePixelBitmap(width, height, m_pixels)) {
    if (!m_bitmap) return;
    m_dc.Reset(::CreateCompatibleDC(nullptr));
    if (m_dc) m_oldBitmap = ::SelectObject(m_dc.Get(), m_bitmap.Get());
}

CPixelSheet::~CPixelSheet() {
    if (m_dc) ::SelectObject(m_dc.Get(), m_oldBitmap);
}

}  // namespace brennvar
