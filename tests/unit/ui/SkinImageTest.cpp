#include "ui/SkinImage_win.h"

#include <gtest/gtest.h>

#include "support/ControlWindow.h"

namespace brennvar {
namespace {

TEST(SkinImageTest, DrawsOverWhatIsThereAndStretchesAFrameWithoutItsNeighbours) {
    const test::TempFolder folder;
    const CSkinImage image = CSkinImage::Load(folder.Write("a.png", test::TextFromHex(test::kPalettePng)));
    ASSERT_TRUE(image);
    // Three frames of one column, and one column that is left over.
    const CSkinImage strip = CSkinImage::FromBitmap({4, 1, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFF0000}});
    const test::ControlWindow window;
    ::UpdateWindow(window.Window());
    const HDC dc = ::GetDC(window.Window());
    image.Draw(dc, 0, 0);
    strip.DrawFrame(dc, {1, 2, 8, 3}, 1, 3);
    strip.DrawFrame(dc, {1, 2, 8, 3}, 3, 3);  // there is no such frame
    strip.DrawFrame(dc, {8, 2, 1, 3}, 0, 3);  // nor such a place
    std::vector<COLORREF> stretched;
    for (int x = 0; x < 9; ++x) stretched.push_back(::GetPixel(dc, x, 2));
    std::vector<COLORREF> expected(9, RGB(0, 255, 0));
    expected.front() = expected.back() = test::ControlWindow::kGround;
    EXPECT_EQ(stretched, expected);
    EXPECT_EQ(::GetPixel(dc, 0, 0), RGB(255, 0, 0));
    // Half green over the ground, with the rounding of the system's own blending.
    EXPECT_NEAR(GetRValue(::GetPixel(dc, 1, 0)), 127, 1);
    EXPECT_EQ(::GetPixel(dc, 2, 0), test::ControlWindow::kGround);
    ::ReleaseDC(window.Window(), dc);
}

TEST(SkinImageTest, IsEmptyWithoutAProperFile) {
    const test::TempFolder folder;
    EXPECT_FALSE(CSkinImage::Load(folder.File("missing.png")));
    EXPECT_FALSE(CSkinImage::Load(folder.Path()));
    EXPECT_FALSE(CSkinImage::Load(folder.Write("empty.png", "")));
    EXPECT_FALSE(CSkinImage::Load(folder.Write("text.png", "no image")));
    std::string wbmp("\0\0\1\1\x80", 5);
    wbmp.resize(8 << 20);
    EXPECT_TRUE(CSkinImage::Load(folder.Write("eight.wbmp", wbmp)));
    EXPECT_FALSE(CSkinImage::Load(folder.Write("more.wbmp", wbmp + "x")));
}

}  // namespace
}  // namespace brennvar
