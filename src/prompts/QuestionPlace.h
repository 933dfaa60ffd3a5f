// Where a question opens: in the corner where notices appear, away from what the user is working on, and beside or
// above the questions that are open already, so that none lies over another one's buttons. Arithmetic only.
#pragma once

#include <span>

#include "ui/BalloonPlace.h"

namespace brennvar {

struct QuestionSize {
    int width = 0;
    int height = 0;
    int margin = 0;   // from the edges of the area
    int gap = 0;      // between two questions
    int buttons = 0;  // height of the strip at the bottom of every question that has its buttons
};

// A place inside the area, also for a question that is too large for it. Where there is no free one it is the place
// where least lies over the buttons of any of them, or below, and then the one that covers least of the others.
[[nodiscard]] PixelBox PlaceQuestion(const QuestionSize& size, const PixelBox& area,
                                     std::span<const PixelBox> others);

// The place covers nothing of the others.
[[nodiscard]] bool IsClearOf(const PixelBox& place, std::span<const PixelBox> others);

}  // namespace brennvar
