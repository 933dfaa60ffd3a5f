// Where a question opens: in the corner where notices appear, away from what the user is working on, and beside or
// above the questions that are open already, so that none lies over another one's buttons. Arithmetic only.
#pragma once

#include <span>

#include "ui/BalloonPlace.h"

namespace brennvar {

struct QuestionSize {
    int width = 0;
    int height = 0;
    int margin = 0;  // from the edges of the area
    int gap = 0;     // between two questions
};

// A place inside the area, also for a question that is too large for it. Where there is no free one it is the place
// that covers least of the others.
[[nodiscard]] PixelBox PlaceQuestion(const QuestionSize& size, const PixelBox& area,
                                     std::span<const PixelBox> others);

}  // namespace brennvar
