#include "ui/ActionMark_win.h"

#include <initializer_list>
#include <vector>

#include "ui/Paint_win.h"
#include "ui/SmoothDc_win.h"

namespace brennvar {
namespace {

constexpr int kUnit = CSmoothDc::kFactor;
constexpr int kSide = 28;  // the units in which the marks are drawn

// White on the disc.
void DrawShape(const CSmoothDc& smooth, int side, ActionMark mark) {
    const auto line = [&](std::initializer_list<POINT> points) {
        std::vector<POINT> scaled;
        for (const POINT& point : points) {
            scaled.push_back({::MulDiv(point.x, side, kSide), ::MulDiv(point.y, side, kSide)});
        }
        smooth.DrawLines(scaled.data(), static_cast<int>(scaled.size()), side / 8, RGB(255, 255, 255));
    };
    switch (mark) {
        case ActionMark::Allow: line({{8, 14}, {12, 20}, {20, 8}}); break;
        case ActionMark::Deny:
            line({{8, 8}, {20, 20}});
            line({{20, 8}, {8, 20}});
            break;
        case ActionMark::Ask:
            line({{9, 10}, {11, 7}, {14, 6}, {17, 7}, {19, 10}, {18, 13}, {14, 15}, {14, 17}});
            line({{14, 22}, {14, 22}});
            break;
        case ActionMark::None: line({{8, 14}, {20, 14}}); break;
    }
}

}  // namespace

COLORREF ActionColour(ActionMark mark) {
    switch (mark) {
        case ActionMark::Allow: return RGB(46, 158, 91);
        case ActionMark::Deny: return RGB(165, 14, 44);
        case ActionMark::Ask: return RGB(255, 128, 64);
        case ActionMark::None: break;
    }
    return RGB(86, 101, 115);
}

void DrawActionMark(HDC dc, const RECT& place, ActionMark mark) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    const int side = WidthOf(place) * kUnit;
    smooth.FillDisc({0, 0, side, side}, ActionColour(mark));
    DrawShape(smooth, side, mark);
}

void DrawPill(HDC dc, const RECT& place, COLORREF colour) {
    const CSmoothDc smooth(dc, place);
    if (smooth.Dc()) smooth.FillPill({0, 0, WidthOf(place) * kUnit, HeightOf(place) * kUnit}, colour);
}

}  // namespace brennvar
