#include "image/NinePieces.h"

#include <gtest/gtest.h>

#include <climits>

#include "image/StateStrip.h"

namespace brennvar {
namespace {

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

TEST(StateStripTest, CutsFramesByIntegerDivision) {
    struct Row {
        int width, height, frame, count;
        ImageRect expected;
    };
    const Row rows[] = {
        {90, 20, 2, 3, {60, 0, 30, 20}},
        {92, 20, 2, 3, {60, 0, 30, 20}},  // two columns are left over
        {3, 1, 1, 3, {1, 0, 1, 1}},
        {90, 20, 0, 1, {0, 0, 90, 20}},
        {2, 20, 0, 3, {}},  // narrower than its frames
        {90, 20, 3, 3, {}},
        {90, 20, -1, 3, {}},
        {90, 20, 0, 0, {}},
        {90, 0, 0, 3, {}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(FrameRect(row.width, row.height, row.frame, row.count), row.expected)
            << row.width << " / " << row.count << ", frame " << row.frame;
    }
}

}  // namespace
}  // namespace brennvar
