#include "ui/ActionMark_win.h"

#include <initializer_list>
#include <vector>

#include "base/Handles_win.h"
#include "ui/Paint_win.h"
#include "ui/SmoothDc_win.h"

namespace brennvar {
namespace {

constexpr int kUnit = CSmoothDc::kFactor;
constexpr int kSide = 28;                         // the units in which the marks are drawn
constexpr COLORREF kOnWarning = RGB(27, 39, 51);  // reads on the warning's orange, in every skin

// Points in a square of kSide units as they stand in the box.
std::vector<POINT> PointsIn(const RECT& box, std::initializer_list<POINT> points) {
    std::vector<POINT> scaled;
    for (const POINT& point : points) {
        scaled.push_back(
            {box.left + ::MulDiv(point.x, WidthOf(box), kSide), box.top + ::MulDiv(point.y, HeightOf(box), kSide)});
    }
    return scaled;
}

void DrawShape(const CSmoothDc& smooth, const RECT& box, ActionMark mark, COLORREF colour) {
    const auto line = [&](std::initializer_list<POINT> points) {
        const std::vector<POINT> scaled = PointsIn(box, points);
        smooth.DrawLines(scaled.data(), static_cast<int>(scaled.size()), WidthOf(box) / 8, colour);
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
    DrawActionMark(dc, place, mark, {.disc = ActionColour(mark), .shape = RGB(255, 255, 255)});
}

void DrawActionMark(HDC dc, const RECT& place, ActionMark mark, const MarkColours& colours) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    const RECT disc{0, 0, WidthOf(place) * kUnit, WidthOf(place) * kUnit};
    smooth.FillDisc(disc, colours.disc);
    DrawShape(smooth, disc, mark, colours.shape);
}

void DrawWarningTriangle(HDC dc, const RECT& place) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    const RECT box{0, 0, WidthOf(place) * kUnit, HeightOf(place) * kUnit};
    // A thick outline of the same colour makes the corners round.
    const std::vector<POINT> outline = PointsIn(box, {{14, 4}, {25, 24}, {3, 24}, {14, 4}});
    const COLORREF ground = ActionColour(ActionMark::Ask);
    {
        const UniqueBrush brush(::CreateSolidBrush(ground));
        const CSelect selectBrush(smooth.Dc(), brush.Get());
        const CSelect selectPen(smooth.Dc(), ::GetStockObject(NULL_PEN));
        ::Polygon(smooth.Dc(), outline.data(), static_cast<int>(outline.size()));
    }
    smooth.DrawLines(outline.data(), static_cast<int>(outline.size()), WidthOf(box) / 7, ground);
    for (const auto& stroke : {PointsIn(box, {{14, 11}, {14, 17}}), PointsIn(box, {{14, 22}, {14, 22}})}) {
        smooth.DrawLines(stroke.data(), static_cast<int>(stroke.size()), WidthOf(box) / 9, kOnWarning);
    }
}

void DrawClosingCross(HDC dc, const RECT& place, COLORREF colour) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    const RECT box{0, 0, WidthOf(place) * kUnit, HeightOf(place) * kUnit};
    for (const auto& stroke : {PointsIn(box, {{7, 7}, {21, 21}}), PointsIn(box, {{7, 21}, {21, 7}})}) {
        smooth.DrawLines(stroke.data(), static_cast<int>(stroke.size()), WidthOf(box) / 11, colour);
    }
}

void DrawUnknownProgram(HDC dc, const RECT& place, COLORREF colour) {
    const CSmoothDc smooth(dc, place);
    if (!smooth.Dc()) return;
    const int side = WidthOf(place) * kUnit;
    const RECT box{0, 0, side, side};
    const auto line = [&](std::initializer_list<POINT> points) {
        const std::vector<POINT> scaled = PointsIn(box, points);
        smooth.DrawLines(scaled.data(), static_cast<int>(scaled.size()), side / 16, colour);
    };
    constexpr LONG kNear = 2;         // one side of the frame, in units
    constexpr LONG kFar = kSide - 2;  // and the other
    line({{kNear, 7}, {kNear, kNear}, {7, kNear}});
    line({{21, kNear}, {kFar, kNear}, {kFar, 7}});
    line({{kFar, 21}, {kFar, kFar}, {21, kFar}});
    line({{7, kFar}, {kNear, kFar}, {kNear, 21}});
    for (const LONG edge : {kNear, kFar}) {
        line({{12, edge}, {16, edge}});
        line({{edge, 12}, {edge, 16}});
    }
    DrawShape(smooth, Inset(box, side / 6), ActionMark::Ask, colour);
}

void DrawPill(HDC dc, const RECT& place, COLORREF colour) {
    const CSmoothDc smooth(dc, place);
    if (smooth.Dc()) smooth.FillPill({0, 0, WidthOf(place) * kUnit, HeightOf(place) * kUnit}, colour);
}

}  // namespace brennvar
