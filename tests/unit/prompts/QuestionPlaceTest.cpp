#include "prompts/QuestionPlace.h"

#include <gtest/gtest.h>

#include <vector>

namespace brennvar {
namespace {

constexpr PixelBox kArea{0, 0, 1200, 780};
constexpr QuestionSize kSize{.width = 460, .height = 340, .margin = 16, .gap = 8, .buttons = 60};

TEST(QuestionPlaceTest, StandsInTheCornerOrBesideAndAboveTheOthers) {
    const PixelBox corner{724, 424, 1184, 764};
    EXPECT_EQ(PlaceQuestion(kSize, kArea, {}), corner);
    std::vector<PixelBox> others{corner};
    EXPECT_EQ(PlaceQuestion(kSize, kArea, others), (PixelBox{256, 424, 716, 764}));
    others.push_back({256, 424, 716, 764});
    EXPECT_EQ(PlaceQuestion(kSize, kArea, others), (PixelBox{724, 76, 1184, 416}));
    // One that was moved elsewhere leaves the corner to the next.
    EXPECT_EQ(PlaceQuestion(kSize, kArea, std::vector<PixelBox>{{100, 100, 560, 420}}), corner);
}

TEST(QuestionPlaceTest, StaysInsideAndCoversAsLittleAsItMust) {
    const PixelBox small{0, 0, 800, 600};
    const PixelBox first = PlaceQuestion(kSize, small, {});
    EXPECT_EQ(first, (PixelBox{324, 244, 784, 584}));
    // There is no free place: from the corner across it, it leaves the first one's buttons free and most of its
    // own.
    EXPECT_EQ(PlaceQuestion(kSize, small, std::vector<PixelBox>{first}), (PixelBox{16, 16, 476, 356}));
    // Buttons weigh more than all else. The corner would share less of the other one, but of its buttons.
    EXPECT_EQ(PlaceQuestion({.width = 460, .height = 160, .margin = 16, .gap = 8, .buttons = 60}, {0, 0, 800, 400},
                            std::vector<PixelBox>{{100, 20, 560, 360}}),
              (PixelBox{324, 0, 784, 160}));
    EXPECT_EQ(PlaceQuestion({.width = 900, .height = 700, .margin = 16, .gap = 8}, small, {}), small);
}

}  // namespace
}  // namespace brennvar
