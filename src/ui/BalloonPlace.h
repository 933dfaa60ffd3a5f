// Where a balloon goes: beside the thing it is about, inside the work area, with its tip on the side of that thing.
// Arithmetic only; all places are pixels of the screen.
#pragma once

namespace brennvar {

struct PixelBox {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    [[nodiscard]] int Width() const { return right - left; }
    [[nodiscard]] int Height() const { return bottom - top; }
    friend bool operator==(const PixelBox&, const PixelBox&) = default;
};

enum class TipSide { Bottom, Top, Right, Left };

struct BalloonShape {
    int width = 0;  // of the body, without the tip
    int height = 0;
    int tipLength = 0;     // how far the tip stands out; it is twice as wide where it starts
    int corner = 0;        // the tip keeps this far from the body's ends
    bool isBelow = false;  // below the anchor rather than above it, where there is room for both
};

struct BalloonPlace {
    PixelBox body;
    TipSide side = TipSide::Bottom;  // of the body
    int tip = 0;                     // the tip's point along that side: x for Bottom and Top, y for the others
    friend bool operator==(const BalloonPlace&, const BalloonPlace&) = default;
};

// Above the anchor where there is room, else below it (or the other way round), left or right of it. An anchor
// outside of the work area (the notification area) is pointed to from the area's edge. Where no side has room the
// body covers the anchor. The body is cut to what the work area holds beside the tip.
[[nodiscard]] BalloonPlace PlaceBalloon(const PixelBox& anchor, const BalloonShape& shape,
                                        const PixelBox& workArea);

}  // namespace brennvar
