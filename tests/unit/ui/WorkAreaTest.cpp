#include "ui/WorkArea_win.h"

#include <gtest/gtest.h>

namespace brennvar {

TEST(WorkAreaTest, MovesAndShrinksIntoTheArea) {
    const RECT area{-800, 20, 0, 600};  // a screen to the left of the main one
    const std::pair<RECT, RECT> rows[] = {
        {FitInto({-700, 100, -600, 200}, area), {-700, 100, -600, 200}},  // inside: stays
        {FitInto({-900, 0, -800, 100}, area), {-800, 20, -700, 120}},
        {FitInto({-50, 550, 50, 650}, area), {-100, 500, 0, 600}},
        {FitInto({-10'000, -10'000, 10'000, 10'000}, area), area},
        {BesideBar(area, {-800, 580, 0, 600}), {-800, 20, 0, 580}},  // below, above, left and right of it
        {BesideBar(area, {-800, 0, 0, 30}), {-800, 30, 0, 600}},
        {BesideBar(area, {-840, 20, -740, 600}), {-740, 20, 0, 600}},
        {BesideBar(area, {-60, 20, 0, 600}), {-800, 20, -60, 600}},
        {BesideBar(area, {0, 560, 800, 600}), area},  // of another screen
        {BesideBar(area, area), area},
        {CenterIn(area, {200, 10'000}), {-500, 20, -300, 600}}};
    for (const auto& [got, expected] : rows) EXPECT_TRUE(::EqualRect(&got, &expected)) << expected.left;
}

}  // namespace brennvar
