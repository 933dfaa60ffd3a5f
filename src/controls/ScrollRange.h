// The arithmetic of a scroll bar. Positions and sizes are counted in any unit (rows, pixels); places on the bar are
// pixels along it.
#pragma once

namespace brennvar {

struct ScrollRange {
    int total = 0;  // of what can be scrolled
    int page = 0;   // that are seen at once
    int position = 0;

    [[nodiscard]] int LastPosition() const { return total > page ? total - page : 0; }
    [[nodiscard]] bool IsNeeded() const { return total > page; }
    [[nodiscard]] int Clamp(int wanted) const;
    // The steps of arrow and page clicks, clamped. A page leaves one unit of the last one in sight.
    [[nodiscard]] int After(int units) const;
    [[nodiscard]] int AfterPages(int pages) const;

    friend bool operator==(const ScrollRange&, const ScrollRange&) = default;
};

struct ThumbPlace {
    int offset = 0;  // from the start of the track
    int length = 0;  // 0: no thumb, the track is too short or nothing can be scrolled

    friend bool operator==(const ThumbPlace&, const ThumbPlace&) = default;
};

[[nodiscard]] ThumbPlace PlaceThumb(const ScrollRange& range, int trackLength, int leastThumb);
// The position for a thumb that was dragged to this offset.
[[nodiscard]] int PositionOfThumb(const ScrollRange& range, int trackLength, int leastThumb, int offset);

}  // namespace brennvar
