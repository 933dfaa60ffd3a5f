#include "image/NinePieces.h"

#include <gtest/gtest.h>

#include <climits>

namespace brennvar {
namespace {

TEST(NinePiecesTest, KeepsCornersAndStretchesTheRest) {
    const auto pieces = NinePieces(10, 8, {100, 200, 50, 40}, {3, 2, 1, 4});
    EXPECT_EQ(pieces[0].from, (ImageRect{0, 0, 3, 2}));  // upper left
    EXPECT_EQ(pieces[0].to, (ImageRect{100, 200, 3, 2}));
    EXPECT_EQ(pieces[4].from, (ImageRect{3, 2, 6, 2}));  // middle
    EXPECT_EQ(pieces[4].to, (ImageRect{103, 202, 46, 34}));
    EXPECT_EQ(pieces[5].from, (ImageRect{9, 2, 1, 2}));  // right edge
    EXPECT_EQ(pieces[5].to, (ImageRect{149, 202, 1, 34}));
    EXPECT_EQ(pieces[8].from, (ImageRect{9, 4, 1, 4}));  // lower right
    EXPECT_EQ(pieces[8].to, (ImageRect{149, 236, 1, 4}));
}

TEST(NinePiecesTest, CoversEveryPixelOnceWhateverTheBorders) {
    const ImageBorders rows[] = {{0, 0, 0, 0},   {3, 3, 3, 3},       {6, 6, 2, 2},
                                 {9, 0, 90, 90}, {-5, -5, -5, -500}, {INT_MAX, INT_MAX, INT_MAX, 1}};
    for (const ImageBorders& borders : rows) {
        for (const int size : {1, 2, 4, 5, 8}) {
            int area = 0;
            for (const NinePiece& piece : NinePieces(6, 6, {10, 20, size, size}, borders)) {
                EXPECT_GE(piece.to.width, 0);
                EXPECT_GE(piece.to.height, 0);
                EXPECT_GE(piece.from.left, 0);
                EXPECT_LE(piece.from.left + piece.from.width, 6);
                area += piece.to.width * piece.to.height;
            }
            EXPECT_EQ(area, size * size) << borders.left << ", " << size;
        }
    }
}

}  // namespace
}  // namespace brennvar
