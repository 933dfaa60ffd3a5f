#include "ui/SmoothDc_win.h"

#include <cstdint>

#include "ui/Paint_win.h"

namespace brennvar {

CSmoothDc::CSmoothDc(HDC target, const RECT& place)
    : m_target(target),
      m_place(place),
      m_small(WidthOf(place), HeightOf(place)),
      m_large(WidthOf(place) * kFactor, HeightOf(place) * kFactor) {
    if (!m_small.Dc() || !m_large.Dc()) return;
    const int width = WidthOf(place);
    const int height = HeightOf(place);
    ::BitBlt(m_small.Dc(), 0, 0, width, height, target, place.left, place.top, SRCCOPY);
    ::SetStretchBltMode(m_large.Dc(), COLORONCOLOR);
    ::StretchBlt(m_large.Dc(), 0, 0, width * kFactor, height * kFactor, m_small.Dc(), 0, 0, width, height, SRCCOPY);
}

CSmoothDc::~CSmoothDc() {
    if (!m_small.Dc() || !m_large.Dc()) return;
    ::GdiFlush();  // what has been drawn so far is in the pixels only now
    MakeSmaller();
    ::BitBlt(m_target, m_place.left, m_place.top, WidthOf(m_place), HeightOf(m_place), m_small.Dc(), 0, 0, SRCCOPY);
}

void CSmoothDc::MakeSmaller() {
    const auto mean = [](std::uint32_t sum) { return sum / (kFactor * kFactor); };
    for (int y = 0; y < HeightOf(m_place); ++y) {
        for (int x = 0; x < WidthOf(m_place); ++x) {
            std::uint32_t red = 0, green = 0, blue = 0;
            for (int i = 0; i < kFactor * kFactor; ++i) {
                const std::uint32_t pixel = m_large.At(x * kFactor + i % kFactor, y * kFactor + i / kFactor);
                red += (pixel >> 16) & 0xFF;
                green += (pixel >> 8) & 0xFF;
                blue += pixel & 0xFF;
            }
            m_small.At(x, y) = mean(red) << 16 | mean(green) << 8 | mean(blue);
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
    // PS_SOLID, PS_ENDCAP_ROUND and PS_JOIN_ROUND are 0.
    const UniquePen pen(::ExtCreatePen(PS_GEOMETRIC, static_cast<DWORD>(width), &brush, 0, nullptr));
    const CSelect select(Dc(), pen.Get());
    ::Polyline(Dc(), points, count);
}

}  // namespace brennvar
