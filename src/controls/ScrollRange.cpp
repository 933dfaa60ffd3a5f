#include "controls/ScrollRange.h"

#include <algorithm>
#include <cstdint>

namespace brennvar {
namespace {

// value * part / whole, rounded; products exceed 32 bits.
int Share(int value, int part, int whole) {
    return static_cast<int>((std::int64_t{value} * part + whole / 2) / whole);
}

}  // namespace

int ScrollRange::Clamp(int wanted) const {
    return std::clamp(wanted, 0, LastPosition());
}

int ScrollRange::After(int units) const {
    const std::int64_t wanted = std::int64_t{position} + units;
    return static_cast<int>(std::clamp<std::int64_t>(wanted, 0, LastPosition()));
}

int ScrollRange::AfterPages(int pages) const {
    const std::int64_t wanted = position + std::int64_t{pages} * std::max(1, page - 1);
    return static_cast<int>(std::clamp<std::int64_t>(wanted, 0, LastPosition()));
}

ThumbPlace PlaceThumb(const ScrollRange& range, int trackLength, int leastThumb) {
    if (!range.IsNeeded() || trackLength <= leastThumb) return {};
    const int length = std::max(leastThumb, Share(trackLength, range.page, range.total));
    const int room = trackLength - length;
    return {Share(room, range.Clamp(range.position), range.LastPosition()), length};
}

int PositionOfThumb(const ScrollRange& range, int trackLength, int leastThumb, int offset) {
    const ThumbPlace thumb = PlaceThumb(range, trackLength, leastThumb);
    const int room = trackLength - thumb.length;
    if (thumb.length == 0 || room <= 0) return range.Clamp(range.position);
    return Share(range.LastPosition(), std::clamp(offset, 0, room), room);
}

}  // namespace brennvar
