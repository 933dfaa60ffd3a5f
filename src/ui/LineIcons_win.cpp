#include "ui/LineIcons_win.h"

#include <array>
#include <cmath>
#include <numbers>

#include "ui/Fonts_win.h"
#include "ui/Paint_win.h"
#include "ui/SmoothDc_win.h"

namespace brennvar {
namespace {

constexpr int kGrid = 16;  // units to the side of a picture
constexpr int kLine = 6;   // quarters of a pixel at 96 per inch

POINT At(const RECT& place, double x, double y) {
    const double unit = static_cast<double>(WidthOf(place)) * CSmoothDc::kFactor / kGrid;
    return {std::lround(x * unit), std::lround(y * unit)};
}

}  // namespace

void DrawMagnifier(HDC dc, const RECT& place, COLORREF colour) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    constexpr double kCentre = 7, kRadius = 4.2;
    std::array<POINT, 25> ring{};
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const double angle = 2 * std::numbers::pi * static_cast<double>(i) / (ring.size() - 1);
        ring[i] = At(place, kCentre + kRadius * std::cos(angle), kCentre + kRadius * std::sin(angle));
    }
    smooth.DrawLines(ring.data(), static_cast<int>(ring.size()), Scale(kLine), colour);
    const std::array<POINT, 2> handle{At(place, 10.2, 10.2), At(place, 13.4, 13.4)};
    smooth.DrawLines(handle.data(), 2, Scale(kLine), colour);
}

void DrawTray(HDC dc, const RECT& place, COLORREF colour) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    // Its outline, and from the left edge on the hollow in which something could lie.
    const std::array<POINT, 14> lines{
        At(place, 2, 9),    At(place, 4.4, 3), At(place, 11.6, 3), At(place, 14, 9),     At(place, 14, 13),
        At(place, 2, 13),   At(place, 2, 9),   At(place, 5.5, 9),  At(place, 6.3, 10.6), At(place, 9.7, 10.6),
        At(place, 10.5, 9), At(place, 14, 9),  At(place, 14, 13),  At(place, 2, 13)};
    smooth.DrawLines(lines.data(), static_cast<int>(lines.size()), Scale(kLine), colour);
}

}  // namespace brennvar
