#include "ui/BalloonPlace.h"

#include <algorithm>

namespace brennvar {
namespace {

PixelBox CutTo(const PixelBox& box, const PixelBox& area) {
    return {std::clamp(box.left, area.left, area.right), std::clamp(box.top, area.top, area.bottom),
            std::clamp(box.right, area.left, area.right), std::clamp(box.bottom, area.top, area.bottom)};
}

// The start of a stretch of this length in the middle of another one, moved into the limits.
int Beside(int from, int to, int length, int least, int most) {
    return std::clamp((from + to - length) / 2, least, std::max(least, most - length));
}

// The middle of the anchor, as far as the body's ends let the tip go there.
int TipAt(int from, int to, int start, int end, int distance) {
    if (end - start < 2 * distance) return (start + end) / 2;
    return std::clamp((from + to) / 2, start + distance, end - distance);
}

}  // namespace

BalloonPlace PlaceBalloon(const PixelBox& farAnchor, const BalloonShape& shape, const PixelBox& area) {
    const PixelBox anchor = CutTo(farAnchor, area);
    const int width = std::min(shape.width, area.Width() - shape.tipLength);
    const int height = std::min(shape.height, area.Height() - shape.tipLength);
    const int distance = shape.corner + shape.tipLength;
    const int x = Beside(anchor.left, anchor.right, width, area.left, area.right);
    const int y = Beside(anchor.top, anchor.bottom, height, area.top, area.bottom);
    const auto at = [&](int left, int top) { return PixelBox{left, top, left + width, top + height}; };
    const int tipX = TipAt(anchor.left, anchor.right, x, x + width, distance);
    const int tipY = TipAt(anchor.top, anchor.bottom, y, y + height, distance);

    const int above = anchor.top - shape.tipLength - height;
    const int below = anchor.bottom + shape.tipLength;
    const bool fitsAbove = above >= area.top;
    const bool fitsBelow = below + height <= area.bottom;
    if (fitsAbove && !(shape.isBelow && fitsBelow)) return {at(x, above), TipSide::Bottom, tipX};
    if (fitsBelow) return {at(x, below), TipSide::Top, tipX};
    const int before = anchor.left - shape.tipLength - width;
    if (before >= area.left) return {at(before, y), TipSide::Right, tipY};
    const int behind = anchor.right + shape.tipLength;
    if (behind + width <= area.right) return {at(behind, y), TipSide::Left, tipY};
    return {at(x, area.top), TipSide::Bottom, tipX};
}

}  // namespace brennvar
