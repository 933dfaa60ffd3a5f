#include "ui/SmoothDc.h"

#include <cstddef>
#include <cstdint>

#include "ui/Paint.h"

namespace brennvar {

CSmoothDc::Sheet::Sheet(HDC target, int width, int height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;  // the first row is the upper one
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    bitmap.Reset(::CreateDIBSection(target, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) return;
    dc.Reset(::CreateCompatibleDC(target));
    if (dc) old = ::SelectObject(dc.Get(), bitmap.Get());
}

CSmoothDc::Sheet::~Sheet() {
    if (dc) ::SelectObject(dc.Get(), old);
}

CSmoothDc::CSmoothDc(HDC target, const RECT& place)
    : m_target(target),
      m_place(place),
      m_small(target, WidthOf(place), HeightOf(place)),
      m_large(target, WidthOf(place) * kFactor, HeightOf(place) * kFactor) {
    if (!m_small.dc || !m_large.dc) return;
    const int width = WidthOf(place);
    const int height = HeightOf(place);
    ::BitBlt(m_small.dc.Get(), 0, 0, width, height, target, place.left, place.top, SRCCOPY);
    ::SetStretchBltMode(m_large.dc.Get(), COLORONCOLOR);
    ::StretchBlt(m_large.dc.Get(), 0, 0, width * kFactor, height * kFactor, m_small.dc.Get(), 0, 0, width, height,
                 SRCCOPY);
}

CSmoothDc::~CSmoothDc() {
    if (!m_small.dc || !m_large.dc) return;
    ::GdiFlush();  // what has been drawn so far is in the pixels only now
    MakeSmaller();
    ::BitBlt(m_target, m_place.left, m_place.top, WidthOf(m_place), HeightOf(m_place), m_small.dc.Get(), 0, 0,
             SRCCOPY);
}

void CSmoothDc::MakeSmaller() {
    const auto* from = static_cast<const std::uint32_t*>(m_large.bits);
    auto* to = static_cast<std::uint32_t*>(m_small.bits);
    const auto factor = static_cast<std::size_t>(kFactor);
    const auto width = static_cast<std::size_t>(WidthOf(m_place));
    const auto height = static_cast<std::size_t>(HeightOf(m_place));
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            std::uint32_t red = 0, green = 0, blue = 0;
            for (std::size_t i = 0; i < factor * factor; ++i) {
                const std::uint32_t pixel =
                    from[(y * factor + i / factor) * width * factor + x * factor + i % factor];
                red += (pixel >> 16) & 0xFF;
                green += (pixel >> 8) & 0xFF;
                blue += pixel & 0xFF;
            }
            const auto mean = [](std::uint32_t sum) { return sum / (kFactor * kFactor); };
            to[y * width + x] = mean(red) << 16 | mean(green) << 8 | mean(blue);
        }
    }
}

void CSmoothDc::FillDisc(const RECT& place, COLORREF colour) const {
    FillPill(place, colour);
}

void CSmoothDc::FillPill(const RECT& place, COLORREF colour) const {
    const UniqueBrush brush(::CreateSolidBrush(colour));
    const CSelect selectBrush(Dc(), brush.Get());
    const CSelect selectPen(Dc(), ::GetStockObject(NULL_PEN));
    const int diameter = HeightOf(place);
    // Without a pen a shape ends one pixel earlier.
    ::RoundRect(Dc(), place.left, place.top, place.right + 1, place.bottom + 1, diameter, diameter);
}

void CSmoothDc::DrawLines(const POINT* points, int count, int width, COLORREF colour) const {
    LOGBRUSH brush{BS_SOLID, colour, 0};
    const UniquePen pen(::ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND,
                                       static_cast<DWORD>(width), &brush, 0, nullptr));
    const CSelect select(Dc(), pen.Get());
    ::Polyline(Dc(), points, count);
}

}  // namespace brennvar
