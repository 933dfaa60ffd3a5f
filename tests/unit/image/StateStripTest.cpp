#include "image/StateStrip.h"

#include <gtest/gtest.h>

namespace brennvar {
namespace {

TEST(StateStripTest, CutsFramesByIntegerDivision) {
    struct Row {
        int width, height, frame, count;
        ImageRect expected;
    };
    const Row rows[] = {
        {90, 20, 0, 3, {0, 0, 30, 20}},
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
