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
long long Covered(const PixelBox& place, std::span<const PixelBox> others) {
    long long covered = 0;
    for (const PixelBox& other : others) {
        const long long width = std::min(place.right, other.right) - std::max(place.left, other.left);
        const long long height = std::min(place.bottom, other.bottom) - std::max(place.top, other.top);
        covered += std::max(width, 0LL) * std::max(height, 0LL);
    }
    return covered;
}

}  // namespace

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
        return Covered(a, others) < Covered(b, others);
    });
}

}  // namespace brennvar
