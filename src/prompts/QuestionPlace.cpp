#include "prompts/QuestionPlace.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace brennvar {
namespace {

PixelBox FitBox(int left, int top, const QuestionSize& size, const PixelBox& area) {
    const int width = std::min(size.width, area.Width());
    const int height = std::min(size.height, area.Height());
    left = std::clamp(left, area.left, area.right - width);
    top = std::clamp(top, area.top, area.bottom - height);
    return {left, top, left + width, top + height};
}

// Square pixels.
long long Shared(const PixelBox& a, const PixelBox& b) {
    const long long width = std::min(a.right, b.right) - std::max(a.left, b.left);
    const long long height = std::min(a.bottom, b.bottom) - std::max(a.top, b.top);
    return std::max(width, 0LL) * std::max(height, 0LL);
}

PixelBox ButtonsOf(const PixelBox& place, int height) {
    return {place.left, std::max(place.top, place.bottom - height), place.right, place.bottom};
}

// Of a place, the less the better: what is shared with buttons, since either question may come to lie above the
// other one, and then whatever is shared.
std::pair<long long, long long> Harm(const PixelBox& place, int buttons, std::span<const PixelBox> others) {
    std::pair<long long, long long> harm;
    for (const PixelBox& other : others) {
        harm.first += Shared(place, ButtonsOf(other, buttons)) + Shared(ButtonsOf(place, buttons), other);
        harm.second += Shared(place, other);
    }
    return harm;
}

}  // namespace

bool IsClearOf(const PixelBox& place, std::span<const PixelBox> others) {
    return Harm(place, 0, others).second == 0;
}

PixelBox PlaceQuestion(const QuestionSize& size, const PixelBox& area, std::span<const PixelBox> others) {
    const int left = area.left + size.margin;
    const int right = area.right - size.margin - size.width;
    const int top = area.top + size.margin;
    const int bottom = area.bottom - size.margin - size.height;
    std::vector<PixelBox> places{FitBox(right, bottom, size, area)};
    for (const PixelBox& other : others) {
        places.push_back(FitBox(other.left - size.gap - size.width, bottom, size, area));
        places.push_back(FitBox(right, other.top - size.gap - size.height, size, area));
    }
    for (const auto& [x, y] : {std::pair(left, bottom), {right, top}, {left, top}}) {
        places.push_back(FitBox(x, y, size, area));
    }
    // The first of the best: they stand in the order in which they are preferred.
    return *std::min_element(places.begin(), places.end(), [&](const PixelBox& a, const PixelBox& b) {
        return Harm(a, size.buttons, others) < Harm(b, size.buttons, others);
    });
}

}  // namespace brennvar
